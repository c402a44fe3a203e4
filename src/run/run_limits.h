#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "run/shared_records.h"

// What a run cannot hold, said in one sentence on standard error, with exit status 1. Any thread may find it out.
//
// Memory that runs out is told by handlers and not by catching: an exception must not leave a parallel region, streams
// swallow those of what they print, and every region and every writer would need the same handling. The process ends at
// once, without destructors, as other threads may still be at work. What was printed so far is kept.

namespace varnolix {

/// Motifs of a list: what fits ScoredShift::partner, and with it an int.
inline constexpr std::size_t mostMotifs = std::size_t{partnerMask} + 1;
/// Columns of a motif. Positions and overlaps of two such motifs fit the 30 bits of a record, their sums an int.
inline constexpr std::size_t mostColumns = std::size_t{1} << 28U;
static_assert(mostMotifs <= std::size_t{1} << 30U && mostColumns < std::size_t{1} << 30U);
/// Alignments of one motif, and records of one motif where they are held: what fits the place in a SortKey.
inline constexpr unsigned alignmentBits = 30;
inline constexpr std::size_t mostAlignmentsOfMotif = std::size_t{1} << alignmentBits;

/// Ends the process with the sentence "Error: <what>." on standard error and status 1.
[[noreturn]] void endForLack(const std::string& what) noexcept;

/// From here on a lack of memory, and a size beyond all bounds, end the run in words.
void endWhereMemoryEnds();

/// Ends the run if there are more than the most.
inline void requireAtMost(std::size_t count, std::size_t most, const char* name) {
    if (count > most) endForLack("more than " + std::to_string(most) + " " + name);
}

}  // namespace varnolix
