#include "scan/stages.h"

#include "scan/collection_scan.h"

namespace varnolix {

void forwardScanDatabaseGlobal() {
    forwardScanAgainst(topGlobalMotifs(), DatasetsCombinedScoreDatabaseGlobalLists);
}

}  // namespace varnolix
