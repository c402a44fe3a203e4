#include "scan/stages.h"

#include "scan/collection_scan.h"

namespace varnolix {

void forwardScanDatabase() {
    forwardScanAgainst(allInputMotifs(), DatasetsCombinedScoreDatabaseLists);
}

}  // namespace varnolix
