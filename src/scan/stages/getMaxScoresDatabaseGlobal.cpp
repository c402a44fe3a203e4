#include "scan/stages.h"

#include "run/shared_records.h"
#include "scan/score_bounds.h"

namespace varnolix {

void getMaxScoresDatabaseGlobal() {
    maxScoresDatabaseGlobalList =
        boundsOfRecords(DatasetsCombinedScoreDatabaseGlobalLists, BoundedMotifs::listOwner, Datasets.size());
}

}  // namespace varnolix
