#include "scan/stages.h"

#include "run/shared_records.h"
#include "scan/pair_records.h"

namespace varnolix {

void getMaxScoresDatabase() {
    attachBounds(DatasetsCombinedScoreDatabaseLists, maxScoresDatabaseList);
}

}  // namespace varnolix
