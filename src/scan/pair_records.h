#pragma once

#include <span>
#include <vector>

#include "run/shared_records.h"
#include "scan/alignment_limits.h"

// What the scans leave for the ranking: the scored alignments of a block of motifs. The scan stages only call these
// functions. Tested by forwardScan_test.cpp and pair_records_test.cpp.

namespace varnolix {

/// The places of all motifs of a list: 0, 1, 2 and so on.
std::vector<std::size_t> allPlaces(std::size_t motifs);

/// Places in Datasets, ascending, of the motifs that the groups belong to.
std::vector<std::size_t> placesOfGroups(const RecordLists& groups);

/// Lays out the two lists and scores the pairs of the first block. The lists must outlive the records.
/// @param chosen places of the left motifs to compare, ascending
/// @param blockSize left motifs whose alignments are held at a time; 0 for all of them
PairRecords scannedPairs(std::span<const data> lefts, std::span<const data> rights, std::vector<std::size_t> chosen,
                         const AlignmentLimits& limits, std::size_t blockSize);

/// Scores the pairs of the block that begins with this left motif, in place of those held so far. Does nothing if the
/// records already hold this block.
void holdBlock(PairRecords& records, std::size_t first);

/// Makes the list take the bounds: one entry for each left motif, zero until the ranking lists the records of the
/// motif. Only then are all alignments of the motif together, and its bounds cost nothing extra.
void attachBounds(PairRecords& records, std::vector<maxScores>& bounds);

}  // namespace varnolix
