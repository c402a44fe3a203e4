#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "rank/record_source.h"
#include "run/record_fields.h"

// Records that a test lists itself, as a source for the ranking, and all records of a source.

namespace varnolix::testing {

/// Each list must stand in the order of the scans: forward records before backward ones, partners ascending.
/// @param partnerID gives the matrixID of a record's partner
template <class PartnerID>
RecordSource listedRecords(const RecordLists& lists, PartnerID partnerID) {
    return {std::numeric_limits<std::size_t>::max() / 2, 1, [](std::size_t) {},
            [&lists, partnerID](std::size_t motif, RecordScratch& scratch) {
                std::vector<SortKey>& keys = scratch.buffers.keys;
                keys.clear();
                for (const dataCombinedScore& record : lists[motif]) {
                    // Chosen so that places ascend in both directions.
                    const Sliding sliding = record.direction == Direction::forward ? Sliding::left : Sliding::right;
                    keys.emplace_back(record.combinedScore,
                                      RecordPlace{record.direction, static_cast<std::uint32_t>(partnerID(record) - 1),
                                                  sliding, static_cast<std::uint32_t>(keys.size())});
                }
                scratch.motif = motif;
                scratch.keys = keys;
            },
            [&lists](const RecordScratch& scratch, const SortKey& key) {
                return lists[scratch.motif][key.place().alignment];
            }};
}

/// Records between input motifs, grouped by the motif stored first.
inline RecordSource listedInputRecords(const RecordLists& lists) {
    return listedRecords(lists, [](const dataCombinedScore& record) { return record.matrixID2; });
}

/// Records against a collection, grouped by input motif.
inline RecordSource listedCollectionRecords(const RecordLists& lists) {
    return listedRecords(lists, innerMatrixID);
}

/// What forEachMotif gives each thread.
struct ListingScratch {
    RecordScratch records;
};

/// All records of each motif, in the order of their keys.
inline RecordLists allRecords(const RecordSource& source, std::size_t motifs) {
    RecordLists lists(motifs);
    forEachMotif<ListingScratch>(source, motifs, [&](ListingScratch& scratch) {
        for (const SortKey& key : scratch.records.keys) {
            lists[scratch.records.motif].push_back(source.recordOf(scratch.records, key));
        }
    });
    return lists;
}

}  // namespace varnolix::testing
