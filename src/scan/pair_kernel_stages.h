#pragma once

#include <cstddef>
#include <cstdint>

#include "scan/pair_kernel.h"

// The two stages of the pair kernel that are written once per kind of processor; see pair_kernel.cpp for the whole.

namespace varnolix::kernel {

/// Distances of alignments up to this length fit 16 bits. Longer ones pass the filter unseen.
inline constexpr int mostFilteredColumns = 64;
inline constexpr std::uint8_t allOrientations = 0xF;

/// Twice the most by which rounding to levels can move the distance of one column: an orientation whose distance exceeds
/// the smallest by more than this per column is surely not the best.
inline constexpr int rivalDistancePerColumn = 8;

/// One motif of a pair.
struct MotifView {
    const KernelColumn* columns;
    const KernelLevels* levels;
    std::size_t length;
};

/// An alignment that may reach the cutoff.
struct Candidate {
    std::uint32_t partner;
    std::int16_t shift;
    std::uint8_t columns;
    std::uint8_t orientations;  ///< bit n: the orientation with value n may be the best
};

/// Cells to add up: columns of the left and the right motif that face each other.
struct Facing {
    const KernelColumn* left;
    const KernelColumn* right;
    std::size_t columns;
};

/// Writes the candidates of a pair, shifts ascending, from `candidates` on, and returns their end. There must be room for
/// all alignments of the pair and one more.
using FilterShifts = Candidate* (*)(const MotifView& left, const MotifView& right, std::uint32_t partner,
                                    const CutoffTable& cutoff, OuterMotif outer, Candidate* candidates);
/// Writes the sum of cells, in units of 2^-53, of each of the `count` items.
using SumCells = void (*)(const Facing* items, std::size_t count, std::int64_t* sums);

struct Stages {
    FilterShifts filterShifts;
    SumCells sumCells;
};

Stages portableStages();
Stages avx2Stages();
/// Whether avx2Stages() can run here.
bool hasAvx2();

}  // namespace varnolix::kernel
