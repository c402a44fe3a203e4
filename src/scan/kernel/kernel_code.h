#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>

#include "scan/kernel/cutoff_table.h"
#include "scan/kernel/exact_sums.h"
#include "scan/kernel/kernel_motifs.h"

// The two steps of the pair kernel that exist in several versions, one for each kind of processor: the byte filter and
// the exact sums. pair_kernel.cpp explains the whole kernel.

namespace varnolix::kernel {

/// The distances of alignments up to this length fit 16 bits. Pairs with longer alignments are not filtered.
inline constexpr int mostFilteredColumns = 64;
static_assert(mostFilteredColumns * cellsPerColumn * levelsPerOne <= std::numeric_limits<std::uint16_t>::max());
static_assert((mostFilteredColumns + 1) * cellsPerColumn * levelsPerOne > std::numeric_limits<std::uint16_t>::max());

/// Twice the largest error that rounding to levels can cause in the distance of a column. An orientation whose distance
/// exceeds the smallest one by more than this per column cannot be the best.
inline constexpr int rivalDistancePerColumn = 8;

/// The left motif of the pairs.
struct LeftMotif {
    const KernelColumn* columns;
    const KernelLevels* levels;
    int length;
};

/// The columns that face each other at a shift.
struct FacingColumns {
    int leftStart;
    int rightStart;
    int columns;
};

inline FacingColumns facingColumns(int shift, int leftLength, int rightLength) {
    const int leftStart = std::max(0, -shift);
    const int rightStart = std::max(0, shift);
    return {leftStart, rightStart, std::min(leftLength - leftStart, rightLength - rightStart)};
}

struct Place {
    std::uint32_t partner;
    std::int16_t shift;
    std::uint16_t columns;
};

/// The bits of a place with partner 0. On a little-endian processor, a bitwise or with the partner completes the place.
inline std::int64_t placeBits(int shift, int columns) {
    return std::bit_cast<std::int64_t>(Place{0, static_cast<std::int16_t>(shift), static_cast<std::uint16_t>(columns)});
}

/// Which orientations may be the best one of an alignment: four words of 16 bits, each nonzero if its orientation may.
/// From the lowest word up: both original, right motif reversed, left motif reversed, both reversed.
using Rivals = std::uint64_t;
inline constexpr int bitsPerRival = 16;
inline constexpr Rivals oneRival = 0xFFFF;
inline constexpr Rivals allRivals = ~Rivals{0};

inline constexpr std::size_t mostShifts = 2 * (mostKernelColumns - leastKernelColumns) + 1;
inline constexpr std::size_t candidateBatch = 512;

/// Alignments that may reach the cutoff. When a batch is full, there is still room for those of one more group, and for
/// a last step that writes more than it keeps.
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

/// Appends the candidates of the pairs of a group; for each partner, shifts ascend. The left motif, or the motifs of
/// the group, must have at most mostFilteredColumns columns.
using FilterShifts = void (*)(const LeftMotif& left, const Partners& partners, const CutoffTable& cutoff,
                              Candidates& candidates);

/// Where the columns of the left and the right motif that face each other begin, and how many they are.
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
/// Whether this processor can run them.
bool hasAvx2();
bool hasAvx512();

}  // namespace varnolix::kernel
