#include "scan/stages.h"

#include "run/shared_records.h"

namespace varnolix {

void backwardScanDatabaseGlobal() {
    // The backward scan finds the same alignments as the forward scan, so nothing is scored again.
    DatasetsCombinedScoreDatabaseGlobalLists.isBackwardScanned = true;
}

}  // namespace varnolix
