#include "scan/stages.h"

#include "run/shared_records.h"
#include "scan/pair_records.h"

namespace varnolix {

void forwardScanDatabaseGlobal() {
    DatasetsCombinedScoreDatabaseGlobalLists =
        scannedPairs(Datasets, DatabaseDatasets, placesOfGroups(topGlobalMatchingResults),
                     {overlap, maxScore, simCutoff}, heldMotifs);
    DatasetsCombinedScoreDatabaseGlobalLists.isForwardScanned = true;
}

}  // namespace varnolix
