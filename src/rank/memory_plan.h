#pragma once

#include <cstddef>
#include <span>

#include "run/shared_records.h"
#include "scan/alignment_limits.h"

// Decides how many motifs a scan takes at a time (the size of a block), so that their alignments fit into memory, and
// refuses runs that certainly do not fit. No other place decides the size of a block.

namespace varnolix {

/// Estimates how many alignments of the pairs of two lists of motifs reach the cutoff, from the pairs of some motifs
/// spread over both lists.
/// @param isOneList whether lefts and rights are the same list, whose pairs count only once
double estimatedAlignments(std::span<const data> lefts, std::span<const data> rights, bool isOneList,
                           const AlignmentLimits& limits);

/// The share of the memory that scored alignments may take.
inline constexpr double alignmentShare = 1.0 / 16;

/// The number of motifs in a block of a list, so that the alignments within a block fit into this many bytes. Blocks
/// are of equal size, except for the last.
/// @param alignments estimated number of alignments of all pairs of the list
std::size_t motifsPerBlock(std::size_t motifs, double alignments, double bytes);

/// The same for motifs that are compared with all motifs of another list.
std::size_t motifsPerBlockAgainst(std::size_t motifs, double alignments, double bytes);

/// The bytes that a run with these input motifs and answers certainly needs besides the motifs: their copies for the
/// scan, and the tables of the trees.
double surelyNeededBytes();

/// Ends the run with a message if there is less memory left than this many bytes.
void requireRoom(double bytes);

/// Sets heldMotifs for the scan of the input motifs.
void planInputScan();

/// Sets heldMotifs for the scans of the input motifs against the collection.
void planCollectionScan();

}  // namespace varnolix
