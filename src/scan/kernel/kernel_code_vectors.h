#pragma once

#include "scan/kernel/kernel_code.h"

// What the AVX2 and the AVX-512 code of the pair kernel share. Before a source file includes this header, it defines
// VARNOLIX_TARGET, the attribute of functions for its processors. It provides its own part as the class Vectors:
//
//   lanes                     how many partners are filtered at once
//   zero()                    a sum of 0 in every lane
//   spread(columns)           two columns of the left motif, the same in every lane
//   load(pairs, firstLane)    two columns of each lane's partner
//   columnMask(columns), masked(pair, mask)
//                             keeps one column of a pair, or both
//   addDistance(sum, a, b)    adds the distances of two columns to each lane's sum
//   inWords(original, rightReversed, leftReversed, bothReversed)
//                             the four sums of each lane as words of 16 bits, in the order of Rivals
//   partnerIndices(motifs)    the index of each lane's partner
//   withPlace(indices, bits)  the same, with the bits of a place
//   keep(words, limits, places, wanted, rivals, keptPlaces)
//                             writes the rivals and places of the lanes within the limits and returns how many there
//                             are; needs room for all lanes
//   sumOf(left, right, columns)
//                             the sum of the cells in units of 2^-53

namespace varnolix::kernel {

/// The greatest distance of an alignment that may be kept, and by how much the distance of a rival may exceed the
/// smallest one.
struct DistanceLimits {
    std::int16_t greatest;  ///< an unsigned value; the intrinsics take signed ones
    std::int16_t margin;
};

/// The distances of each lane over the columns that face each other, in the four orientations.
/// @param right the pair that begins with the first of these columns
template <class Vectors>
VARNOLIX_TARGET auto distances(const LeftMotif& left, int leftStart, const KernelLevelPairs* right,
                               std::size_t firstLane, int columns) {
    constexpr int columnsPerStep = 2;
    const KernelLevels* levels = left.levels + leftStart;
    auto original = Vectors::zero();
    auto rightReversed = original;
    auto leftReversed = original;
    auto bothReversed = original;
    const auto add = [&](auto only) VARNOLIX_TARGET {
        const auto a = only(Vectors::spread(levels));
        const auto aReversed = only(Vectors::spread(levels + left.length));
        const auto b = only(Vectors::load(right[0], firstLane));
        const auto bReversed = only(Vectors::load(right[1], firstLane));
        original = Vectors::addDistance(original, a, b);
        rightReversed = Vectors::addDistance(rightReversed, a, bReversed);
        leftReversed = Vectors::addDistance(leftReversed, aReversed, b);
        bothReversed = Vectors::addDistance(bothReversed, aReversed, bReversed);
    };
    for (; columns > columnsPerStep; columns -= columnsPerStep) {
        add([](auto pair) VARNOLIX_TARGET { return pair; });
        levels += columnsPerStep;
        right += std::ptrdiff_t{2} * columnsPerStep;
    }
    // The last step has one column or two.
    const auto mask = Vectors::columnMask(columns);
    add([&](auto pair) VARNOLIX_TARGET { return Vectors::masked(pair, mask); });
    return Vectors::inWords(original, rightReversed, leftReversed, bothReversed);
}

template <class Vectors>
VARNOLIX_TARGET void filterLanes(const LeftMotif& left, const Partners& partners, std::size_t firstLane,
                                 const CutoffTable& cutoff, Candidates& candidates) {
    const int least = static_cast<int>(leastKernelColumns);
    const int rightLength = static_cast<int>(partners.group.length);
    const KernelLevelPairs* rightLevels = partners.motifs.pairs(partners.group);
    const unsigned wanted = partners.lanes >> firstLane & ((1U << Vectors::lanes) - 1U);
    const auto indices = Vectors::partnerIndices(&partners.group.motifs[firstLane]);
    std::size_t count = candidates.count;
    for (int shift = least - left.length; shift <= rightLength - least; ++shift) {
        const FacingColumns facing = facingColumns(shift, left.length, rightLength);
        const std::int32_t greatest = cutoff.greatestDistance(static_cast<std::size_t>(facing.columns));
        if (greatest < 0) {
            continue;
        }
        const DistanceLimits limits{static_cast<std::int16_t>(greatest),
                                    static_cast<std::int16_t>(rivalDistancePerColumn * facing.columns)};
        const auto words = distances<Vectors>(
            left, facing.leftStart, rightLevels + std::ptrdiff_t{2} * facing.rightStart, firstLane, facing.columns);
        const auto places = Vectors::withPlace(indices, placeBits(shift, facing.columns));
        // Store unconditionally, advance only by what is kept: a branch would mispredict and delay the next steps.
        count += Vectors::keep(words, limits, places, wanted, &candidates.rivals[count], &candidates.places[count]);
    }
    candidates.count = count;
}

template <class Vectors>
VARNOLIX_TARGET void filterShifts(const LeftMotif& left, const Partners& partners, const CutoffTable& cutoff,
                                  Candidates& candidates) {
    for (std::size_t firstLane = 0; partners.lanes >> firstLane != 0; firstLane += Vectors::lanes) {
        filterLanes<Vectors>(left, partners, firstLane, cutoff, candidates);
    }
}

template <class Vectors>
VARNOLIX_TARGET void sumCells(const Facing* items, std::size_t count, std::int64_t* sums) {
    for (std::size_t n = 0; n < count; ++n) {
        sums[n] = Vectors::sumOf(items[n].left, items[n].right, items[n].columns);
    }
}

template <class Vectors>
CodeSteps vectorSteps() {
    return {filterShifts<Vectors>, sumCells<Vectors>};
}

}  // namespace varnolix::kernel
