#pragma once

#include <cstddef>
#include <span>

#include "run/shared_records.h"
#include "scan/alignment_limits.h"

// How many motifs a scan takes at a time, so that their alignments fit the memory, and what surely does not fit. This
// is the only place where the size of a block is decided.

namespace varnolix {

/// Estimate of the alignments of all pairs of two lists of motifs that reach the cutoff, from the pairs of some motifs
/// spread over both lists.
/// @param isOneList whether lefts and rights are one list, whose pairs count once
double estimatedAlignments(std::span<const data> lefts, std::span<const data> rights, bool isOneList,
                           const AlignmentLimits& limits);

/// The share of the memory that scored alignments may take.
inline constexpr double alignmentShare = 1.0 / 16;

/// How many motifs of a list one block has, so that the alignments among them fit the bytes. Blocks are of equal size.
/// @param alignments estimate of the alignments of all pairs of the list
std::size_t motifsPerBlock(std::size_t motifs, double alignments, double bytes);

/// The same for motifs with all of another list.
std::size_t motifsPerBlockAgainst(std::size_t motifs, double alignments, double bytes);

/// Bytes that a run of these input motifs and answers surely takes beside the motifs: their copies for the scan, and
/// the tables of the trees.
double surelyNeededBytes();

/// Ends the run, in words, if so many bytes are more than what is left of the memory.
void requireRoom(double bytes);

/// Sets heldMotifs for the scan of the input motifs.
void planInputScan();

/// Sets heldMotifs for the scans of the input motifs against the collection.
void planCollectionScan();

}  // namespace varnolix
