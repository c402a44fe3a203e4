#include "scan/stages.h"

#include "run/shared_records.h"
#include "scan/score_bounds.h"

namespace varnolix {

void getMaxScoresDatabase() {
    maxScoresDatabaseList =
        boundsOfRecords(DatasetsCombinedScoreDatabaseLists, BoundedMotifs::listOwner, Datasets.size());
}

}  // namespace varnolix
