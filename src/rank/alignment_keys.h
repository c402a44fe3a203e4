#pragma once

#include <span>
#include <vector>

#include "rank/sort_key.h"
#include "run/scored_shift.h"
#include "run/shared_records.h"
#include "scan/pair_scan.h"

// The sort keys of the records of one motif, straight from its alignments, and the record that a key stands for. So a
// record that is not kept need never be made. Keys stand in the order in which the scans make the records. Tested by
// record_source_test.cpp against the records of the scans.

namespace varnolix {

/// Memory for keys, used again from motif to motif.
struct KeyRooms {
    std::vector<int> columns;       ///< one an alignment
    std::vector<double> shiftKeys;  ///< one an alignment
    std::vector<SortKey> keys;
    std::vector<SortKey> backwardKeys;
};

/// The keys of the records that store the motif first, forward ones before backward ones. A key's place tells the
/// record to recordOfKey; its partner is the place of the other motif in its list.
/// @param shifts all kept alignments of the motif, by partner and shift, with the motif as the left one; its bounds are
/// taken over them
/// @return a part of the rooms, to be put into any order
std::span<SortKey> keysOfMotifFirst(std::span<const ScoredShift> shifts, ListedMotif motif,
                                    std::span<const ListedMotif> partners, KeyRooms& rooms);

/// The same for all records of the motif's pairs, whichever motif they store first.
std::span<SortKey> keysOfPairs(std::span<const ScoredShift> shifts, ListedMotif motif,
                               std::span<const ListedMotif> partners, KeyRooms& rooms);

/// The record of a key.
/// @param shifts those that the key was made of
dataCombinedScore recordOfKey(const SortKey& key, std::span<const ScoredShift> shifts, ListedMotif motif,
                              ListedMotif partner, OuterMotif outer);

}  // namespace varnolix
