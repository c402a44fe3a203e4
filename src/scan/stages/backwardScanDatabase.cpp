#include "scan/stages.h"

#include "run/shared_records.h"

namespace varnolix {

void backwardScanDatabase() {
    // The backward scan finds the same alignments as the forward scan, so nothing is scored again.
    DatasetsCombinedScoreDatabaseLists.isBackwardScanned = true;
}

}  // namespace varnolix
