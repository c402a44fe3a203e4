#include "scan/stages.h"

#include "run/shared_records.h"
#include "scan/pair_scan.h"

namespace varnolix {

void forwardScan() {
    scannedPairs = scanAllPairs(Datasets, simCutoff);
    reserveRecordsOfPairs(scannedPairs, Datasets, DatasetsCombinedScoreLists);
    appendRecordsOfPairs(Direction::forward, scannedPairs, Datasets, DatasetsCombinedScoreLists);
}

}  // namespace varnolix
