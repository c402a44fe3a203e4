#pragma once

#include <cstddef>
#include <span>

#include "run/shared_records.h"

// Whether a run may hold all its records at once.

namespace varnolix {

/// Bytes that this process may use: the machine's memory, or the limit on the process where that is lower.
std::size_t usableMemory();

/// Estimate of the bytes that the records of all pairs of two lists of motifs take, with the scored alignments that
/// they are made of, from the pairs of some motifs spread over both lists.
/// @param isOneList whether lefts and rights are one list, whose pairs count once
double estimatedRecordBytes(std::span<const data> lefts, std::span<const data> rights, bool isOneList, double cutoff);

/// The share of the memory that records may take. Making them anew takes no longer than holding more of them than the
/// processor's caches do, so this is low.
inline constexpr double recordShare = 1.0 / 256;

/// True where the records of all pairs of input motifs fit the share of the memory.
bool holdsInputRecords();

/// The same for the records of all input motifs against the collection.
bool holdsCollectionRecords();

}  // namespace varnolix
