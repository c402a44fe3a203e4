#include "scan/stages.h"

#include "run/shared_records.h"

namespace varnolix {

void backwardScanDatabase() {
    // The backward scan meets the same alignments as the forward one, so nothing is scored again.
    DatasetsCombinedScoreDatabaseLists.isBackwardScanned = true;
}

}  // namespace varnolix
