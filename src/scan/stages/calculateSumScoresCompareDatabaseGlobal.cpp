#include "scan/stages.h"

#include "run/shared_records.h"
#include "scan/score_bounds.h"

namespace varnolix {

void calculateSumScoresCompareDatabaseGlobal() {
    setCombinedScores(DatasetsCombinedScoreDatabaseGlobalLists, maxScoresDatabaseGlobalList);
}

}  // namespace varnolix
