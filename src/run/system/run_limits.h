#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "run/shared_records.h"

// The limits of a run. Exceeding one ends the process with a sentence on standard error and exit status 1, from any
// thread.
//
// Running out of memory is dealt with in handlers instead of catch blocks: an exception must not leave a parallel
// region, streams swallow the exceptions of what they print, and every region and every writer would need the same
// code. The process ends at once, without running destructors, as other threads may still be working. What was already
// printed is kept.

namespace varnolix {

/// Motifs in a list: their indices have to fit ScoredShift::partner. That makes them fit an int, too.
inline constexpr std::size_t mostMotifs = std::size_t{partnerMask} + 1;
/// Columns of a motif: positions and overlaps of two such motifs fit the 30 bits of a record, and their sums an int.
inline constexpr std::size_t mostColumns = std::size_t{1} << 28U;
static_assert(mostMotifs <= std::size_t{1} << 30U && mostColumns < std::size_t{1} << 30U);
/// Alignments of one motif, and records of one motif where these are stored: they have to fit the place in a SortKey.
inline constexpr unsigned alignmentBits = 30;
inline constexpr std::size_t mostAlignmentsOfMotif = std::size_t{1} << alignmentBits;

/// Ends the process with the sentence "Error: <what>." on standard error and status 1.
[[noreturn]] void endForLack(const std::string& what) noexcept;

/// From now on, running out of memory or asking for an impossible size ends the run with such a sentence.
void endWhereMemoryEnds();

/// Ends the run if `count` is more than `most`.
inline void requireAtMost(std::size_t count, std::size_t most, const char* name) {
    if (count > most) endForLack("more than " + std::to_string(most) + " " + name);
}

}  // namespace varnolix
