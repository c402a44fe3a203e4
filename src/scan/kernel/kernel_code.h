#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>

#include "scan/kernel/cutoff_table.h"
#include "scan/kernel/exact_sums.h"
#include "scan/kernel/kernel_motifs.h"

// The two steps of the pair kernel that are written once for each kind of processor: the byte filter and the exact
// sums. pair_kernel.cpp explains the whole.

namespace varnolix::kernel {

/// Distances of alignments up to this length fit 16 bits, and not of longer ones. Pairs with longer ones are not
/// filtered.
inline constexpr int mostFilteredColumns = 64;
static_assert(mostFilteredColumns * cellsPerColumn * levelsPerOne <= std::numeric_limits<std::uint16_t>::max());
static_assert((mostFilteredColumns + 1) * cellsPerColumn * levelsPerOne > std::numeric_limits<std::uint16_t>::max());

/// Twice the most by which rounding to levels can move the distance of one column: an orientation whose distance
/// exceeds the smallest by more than this per column is surely not the best.
inline constexpr int rivalDistancePerColumn = 8;

/// The left motif of the pairs.
struct LeftMotif {
    const KernelColumn* columns;
    const KernelLevels* levels;
    int length;
};

/// The columns that face each other at a shift.
struct Overlap {
    int leftStart;
    int rightStart;
    int columns;
};

inline Overlap overlapAt(int shift, int leftLength, int rightLength) {
    const int leftStart = std::max(0, -shift);
    const int rightStart = std::max(0, shift);
    return {leftStart, rightStart, std::min(leftLength - leftStart, rightLength - rightStart)};
}

struct Place {
    std::uint32_t partner;
    std::int16_t shift;
    std::uint16_t columns;
};

/// A place without its partner as a number, into which the partner can be or-ed where bytes run from the lowest on.
inline std::int64_t placeBits(int shift, int columns) {
    return std::bit_cast<std::int64_t>(Place{0, static_cast<std::int16_t>(shift), static_cast<std::uint16_t>(columns)});
}

/// Orientations that may be the best of an alignment: four words of 16 bits, from the lowest on, for both original,
/// right one reversed, left one reversed, both reversed; nonzero if so.
using Rivals = std::uint64_t;
inline constexpr int bitsPerRival = 16;
inline constexpr Rivals oneRival = 0xFFFF;
inline constexpr Rivals allRivals = ~Rivals{0};

inline constexpr std::size_t mostShifts = 2 * (mostKernelColumns - leastKernelColumns) + 1;
inline constexpr std::size_t candidateBatch = 512;

/// Alignments that may reach the cutoff. When a batch is full there is still room for those of one more group, and for
/// one step that writes more than it keeps.
struct Candidates {
    static constexpr std::size_t capacity = candidateBatch + kernelLanes * (mostShifts + 1);
    std::size_t count = 0;
    std::array<Rivals, capacity> rivals;  // both are written before they are read
    std::array<Place, capacity> places;
};

struct Partners {
    const KernelMotifs& motifs;
    const KernelGroup& group;
    unsigned lanes;  ///< bit n: lane n is wanted
};

/// Appends the candidates of the pairs of a group, for each partner shifts ascending. Either the left motif or those of
/// the group have at most mostFilteredColumns columns.
using FilterShifts = void (*)(const LeftMotif& left, const Partners& partners, const CutoffTable& cutoff,
                              Candidates& candidates);
/// Columns of the left and the right motif that face each other.
struct Facing {
    const KernelColumn* left;
    const KernelColumn* right;
    int columns;
};

/// Writes the sums of the cells of each of the `count` items, in units of 2^-53.
using SumCells = void (*)(const Facing* items, std::size_t count, std::int64_t* sums);

struct CodeSteps {
    FilterShifts filterShifts;
    SumCells sumCells;
};

CodeSteps portableSteps();
CodeSteps avx2Steps();
CodeSteps avx512Steps();
/// Whether these can run here.
bool hasAvx2();
bool hasAvx512();

}  // namespace varnolix::kernel
