#include "scan/stages.h"

#include "run/shared_records.h"
#include "scan/pair_records.h"

namespace varnolix {

void forwardScanDatabase() {
    DatasetsCombinedScoreDatabaseLists = scannedPairs(Datasets, DatabaseDatasets, allPlaces(Datasets.size()),
                                                      {overlap, maxScore, simCutoff}, heldMotifs);
    DatasetsCombinedScoreDatabaseLists.isForwardScanned = true;
}

}  // namespace varnolix
