#include "scan/stages.h"

#include <utility>

#include "run/shared_records.h"
#include "scan/pair_scan.h"

namespace varnolix {

void backwardScan() {
    const ShiftRows pairs = std::exchange(scannedPairs, {});
    appendRecordsOfPairs(Direction::backward, pairs, Datasets, DatasetsCombinedScoreLists);
}

}  // namespace varnolix
