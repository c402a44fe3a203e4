#include "scan/stages.h"

#include "run/shared_records.h"

namespace varnolix {

void backwardScanDatabaseGlobal() {
    // The backward scan meets the same alignments as the forward one, so nothing is scored again.
    DatasetsCombinedScoreDatabaseGlobalLists.isBackwardScanned = true;
}

}  // namespace varnolix
