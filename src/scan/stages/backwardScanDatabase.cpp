#include "scan/stages.h"

#include "scan/collection_scan.h"

namespace varnolix {

void backwardScanDatabase() {
    backwardScanAgainst(DatasetsCombinedScoreDatabaseLists);
}

}  // namespace varnolix
