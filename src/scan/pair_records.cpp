#include "scan/pair_records.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "scan/pair_scan.h"

namespace varnolix {

namespace {

std::size_t endOfBlock(const PairRecords& records, std::size_t first) {
    return std::min(first + records.blockSize, records.scan->lefts().size());
}

void scanRows(PairRecords& records, std::size_t first) {
    records.rows = {};  // freed before the next rows take their memory
    records.rows = scanBlock(*records.scan, records.chosen, first, endOfBlock(records, first));
    records.first = first;
}

}  // namespace

std::vector<std::size_t> allPlaces(std::size_t motifs) {
    std::vector<std::size_t> places(motifs);
    std::iota(places.begin(), places.end(), std::size_t{0});
    return places;
}

std::vector<std::size_t> placesOfGroups(const RecordLists& groups) {
    std::vector<std::size_t> places;
    for (const std::vector<dataCombinedScore>& group : groups) {
        places.push_back(static_cast<std::size_t>(group.front().matrixID1 - 1));
    }
    std::sort(places.begin(), places.end());
    return places;
}

PairRecords scannedPairs(std::span<const data> lefts, std::span<const data> rights, std::vector<std::size_t> chosen,
                         const AlignmentLimits& limits, std::size_t blockSize) {
    PairRecords records;
    records.scan = std::make_shared<const PairScan>(lefts, rights, limits);
    records.chosen = std::move(chosen);
    records.blockSize = std::max<std::size_t>(1, blockSize == 0 ? lefts.size() : blockSize);
    scanRows(records, 0);
    return records;
}

void holdBlock(PairRecords& records, std::size_t first) {
    const bool isHeld = records.first == first && records.rows.size() == endOfBlock(records, first) - first;
    if (!isHeld) scanRows(records, first);
}

void attachBounds(PairRecords& records, std::vector<maxScores>& bounds) {
    bounds.assign(records.scan->lefts().size(), {});
    records.bounds = &bounds;
}

}  // namespace varnolix
