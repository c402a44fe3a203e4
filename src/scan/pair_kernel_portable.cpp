#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "scan/pair_kernel_stages.h"

// The stages in plain C++, for processors without a version of their own.

namespace varnolix::kernel {

namespace {

int distance(const KernelLevels* left, const KernelLevels* right, int columns) {
    int sum = 0;
    for (int k = 0; k < columns; ++k) {
        for (std::size_t base = 0; base < 4; ++base) {
            sum += std::abs(left[k].levels[base] - right[k].levels[base]);
        }
    }
    return sum;
}

Candidate* filterShifts(const MotifView& left, const MotifView& right, std::uint32_t partner, const CutoffTable& cutoff,
                        OuterMotif outer, Candidate* candidates) {
    const int leftLength = static_cast<int>(left.length);
    const int rightLength = static_cast<int>(right.length);
    const int least = static_cast<int>(leastKernelColumns);
    for (int shift = least - leftLength; shift <= rightLength - least; ++shift) {
        const int leftStart = std::max(0, -shift);
        const int rightStart = std::max(0, shift);
        const int columns = std::min(leftLength - leftStart, rightLength - rightStart);
        Candidate candidate{partner, static_cast<std::int16_t>(shift), static_cast<std::uint8_t>(columns),
                            allOrientations};
        if (columns <= mostFilteredColumns) {
            const KernelLevels* leftLevels = left.levels + leftStart;
            const KernelLevels* rightLevels = right.levels + rightStart;
            const int rightReversed = distance(leftLevels, rightLevels + rightLength, columns);
            const int leftReversed = distance(leftLevels + leftLength, rightLevels, columns);
            const bool leftIsOuter = outer == OuterMotif::left;
            const std::array<int, 4> distances = {
                distance(leftLevels, rightLevels, columns), leftIsOuter ? rightReversed : leftReversed,
                leftIsOuter ? leftReversed : rightReversed,
                distance(leftLevels + leftLength, rightLevels + rightLength, columns)};
            const int smallest = *std::min_element(distances.begin(), distances.end());
            if (smallest > cutoff.greatestDistance(static_cast<std::size_t>(columns))) {
                continue;
            }
            unsigned orientations = 0;
            for (std::size_t n = 0; n < distances.size(); ++n) {
                orientations |= static_cast<unsigned>(distances[n] <= smallest + rivalDistancePerColumn * columns) << n;
            }
            candidate.orientations = static_cast<std::uint8_t>(orientations);
        }
        *candidates++ = candidate;
    }
    return candidates;
}

void sumCells(const Facing* items, std::size_t count, std::int64_t* sums) {
    for (std::size_t item = 0; item < count; ++item) {
        const Facing& facing = items[item];
        std::int64_t sum = 0;
        for (std::size_t k = 0; k < facing.columns; ++k) {
            for (std::size_t base = 0; base < 4; ++base) {
                const double cell = 1.0 - std::fabs(facing.left[k].values[base] - facing.right[k].values[base]);
                sum += static_cast<std::int64_t>(cell * 0x1p53);
            }
        }
        sums[item] = sum;
    }
}

}  // namespace

Stages portableStages() {
    return {filterShifts, sumCells};
}

}  // namespace varnolix::kernel
