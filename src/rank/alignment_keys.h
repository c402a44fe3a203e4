#pragma once

#include <span>
#include <vector>

#include "rank/sort_key.h"
#include "run/scored_shift.h"
#include "run/shared_records.h"
#include "scan/pair_scan.h"

// Computes the sort keys of the records of a motif directly from its alignments, and makes the record that a key stands
// for. So a record that is not kept is never made. Keys are listed in the order in which the scans make the records.
// Tested by record_source_test.cpp against the records of the scans.

namespace varnolix {

/// Buffers for keys, reused from motif to motif.
struct KeyBuffers {
    std::vector<int> columns;       ///< one for each alignment
    std::vector<double> shiftKeys;  ///< one for each alignment
    std::vector<SortKey> keys;
    std::vector<SortKey> backwardKeys;
};

/// The alignments of one motif and what the keys of its records depend on.
struct MotifAlignments {
    std::span<const ScoredShift> shifts;  ///< all of the motif, which is the left one, ordered by partner and shift
    ListedMotif motif;
    std::span<const ListedMotif> partners;
    bool hasForward;   ///< whether forward records are made from them
    bool hasBackward;  ///< whether backward records are
    bool isScored;     ///< whether keys have their combinedScore; otherwise it is 0
};

/// The keys of the records that store the motif first, in the order in which the scans list them.
/// @param bounds raised to those of the motif
/// @return a part of the buffers; the caller may reorder it
std::span<SortKey> keysOfMotifFirst(const MotifAlignments& alignments, maxScores& bounds, KeyBuffers& buffers);

/// The same for all records of the motif's pairs, whichever motif they store first.
std::span<SortKey> keysOfPairs(const MotifAlignments& alignments, maxScores& bounds, KeyBuffers& buffers);

/// The record of a key of these alignments.
dataCombinedScore recordOfKey(const SortKey& key, const MotifAlignments& alignments, OuterMotif outer);

}  // namespace varnolix
