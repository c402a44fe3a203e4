#pragma once

#include <cstddef>
#include <span>

#include "run/shared_records.h"

// Whether a run may hold all its records at once, and how many motifs it takes at a time where it may not.

namespace varnolix {

/// Estimate of the alignments of all pairs of two lists of motifs that reach the cutoff, from the pairs of some motifs
/// spread over both lists.
/// @param isOneList whether lefts and rights are one list, whose pairs count once
double estimatedAlignments(std::span<const data> lefts, std::span<const data> rights, bool isOneList, double cutoff);

/// Bytes of the records that the alignments give, with the alignments themselves.
double recordBytes(double alignments);

/// The share of the memory that records may take. Making them anew takes no longer than holding more of them than the
/// processor's caches do, so this is low.
inline constexpr double recordShare = 1.0 / 256;

/// The share that scored alignments may take where records are made anew.
inline constexpr double alignmentShare = 1.0 / 16;

/// Into how many motifs at a time, evenly, a list is cut so that the alignments among those of one block fit the bytes.
/// @param alignments estimate of the alignments of all pairs of the list
std::size_t motifsPerBlock(std::size_t motifs, double alignments, double bytes);

/// Bytes that a run of these input motifs and answers surely takes beside the motifs: their copies for the scan, and
/// the tables of the trees.
double surelyNeededBytes();

/// Ends the run, in words, if so many bytes are more than what is left of the memory.
void requireRoom(double bytes);

/// True where the records of all pairs of input motifs fit the share of the memory.
bool holdsInputRecords();

/// The same for the records of all input motifs against the collection.
bool holdsCollectionRecords();

/// Number of input motifs whose alignments among themselves fit the share of the memory.
std::size_t inputMotifsPerBlock();

}  // namespace varnolix
