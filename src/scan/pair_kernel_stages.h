#pragma once

#include <array>
#include <cstdint>

#include "scan/pair_kernel.h"

// The two stages of the pair kernel that are written once per kind of processor; see pair_kernel.cpp for the whole.

namespace varnolix::kernel {

/// Distances of alignments up to this length fit 16 bits. Pairs with longer ones are not filtered.
inline constexpr int mostFilteredColumns = 64;

/// Twice the most by which rounding to levels can move the distance of one column: an orientation whose distance
/// exceeds the smallest by more than this per column is surely not the best.
inline constexpr int rivalDistancePerColumn = 8;

/// The left motif of the pairs.
struct LeftMotif {
    const KernelColumn* columns;
    const KernelLevels* levels;
    int length;
};

struct Place {
    std::uint32_t partner;
    std::int16_t shift;
    std::uint16_t columns;
};

/// Orientations that may be the best of an alignment: four words of 16 bits, from the lowest on, for both original,
/// right one reversed, left one reversed, both reversed; nonzero if so.
using Rivals = std::uint64_t;
inline constexpr int bitsPerRival = 16;
inline constexpr Rivals oneRival = 0xFFFF;
inline constexpr Rivals allRivals = ~Rivals{0};

inline constexpr std::size_t mostShifts = 2 * (mostKernelColumns - leastKernelColumns) + 1;
inline constexpr std::size_t candidateBatch = 512;

/// Alignments that may reach the cutoff, with room for those of one more group when a batch is full, and for one step
/// that writes more than it keeps.
struct Candidates {
    static constexpr std::size_t room = candidateBatch + kernelLanes * (mostShifts + 1);
    std::size_t count = 0;
    std::array<Rivals, room> rivals;  // both written before they are read
    std::array<Place, room> places;
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
/// The sum of the cells of columns that face each other, in units of 2^-53.
using SumCells = std::int64_t (*)(const KernelColumn* left, const KernelColumn* right, int columns);

struct Stages {
    FilterShifts filterShifts;
    SumCells sumCells;
};

Stages portableStages();
Stages avx2Stages();
/// Whether avx2Stages() can run here.
bool hasAvx2();

}  // namespace varnolix::kernel
