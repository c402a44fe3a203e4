#include "scan/stages.h"

#include "scan/collection_scan.h"

namespace varnolix {

void backwardScanDatabaseGlobal() {
    backwardScanAgainst(DatasetsCombinedScoreDatabaseGlobalLists);
}

}  // namespace varnolix
