#include "scan/collection_scan.h"

#include <numeric>
#include <utility>

#include "scan/pair_scan.h"

namespace varnolix {

std::vector<std::size_t> allInputMotifs() {
    std::vector<std::size_t> places(Datasets.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    return places;
}

std::vector<std::size_t> topGlobalMotifs() {
    std::vector<std::size_t> places;
    for (const std::vector<dataCombinedScore>& group : topGlobalMatchingResults) {
        places.push_back(static_cast<std::size_t>(group.front().matrixID1 - 1));
    }
    return places;
}

void forwardScanAgainst(const std::vector<std::size_t>& inputMotifs, RecordLists& lists) {
    scannedDatabasePairs = scanAgainst(Datasets, inputMotifs, DatabaseDatasets, simCutoff);
    appendRecordsAgainst(Direction::forward, scannedDatabasePairs, Datasets, DatabaseDatasets, lists);
}

void backwardScanAgainst(RecordLists& lists) {
    const ShiftRows pairs = std::exchange(scannedDatabasePairs, {});
    appendRecordsAgainst(Direction::backward, pairs, Datasets, DatabaseDatasets, lists);
}

}  // namespace varnolix
