#include "scan/stages.h"

#include "run/shared_records.h"
#include "scan/pair_records.h"

namespace varnolix {

void forwardScan() {
    DatasetsCombinedScoreLists =
        scannedPairs(Datasets, Datasets, allPlaces(Datasets.size()), {overlap, maxScore, simCutoff}, heldMotifs);
    DatasetsCombinedScoreLists.isForwardScanned = true;
}

}  // namespace varnolix
