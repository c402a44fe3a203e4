#include "scan/stages.h"

#include "run/shared_records.h"
#include "scan/score_bounds.h"

namespace varnolix {

void getMaxScores() {
    maxScoresList = boundsOfRecords(DatasetsCombinedScoreLists, BoundedMotifs::both, Datasets.size());
}

}  // namespace varnolix
