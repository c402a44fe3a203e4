#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "scan/kernel/kernel_code.h"

// The steps in plain C++, for processors without a version of their own.

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

void filterPartner(const LeftMotif& left, const KernelMotifs& motifs, std::uint32_t partner, const CutoffTable& cutoff,
                   Candidates& candidates) {
    const int least = static_cast<int>(leastKernelColumns);
    const int rightLength = static_cast<int>(motifs.length(partner));
    for (int shift = least - left.length; shift <= rightLength - least; ++shift) {
        const FacingColumns facing = facingColumns(shift, left.length, rightLength);
        const int columns = facing.columns;
        const KernelLevels* a = left.levels + facing.leftStart;
        const KernelLevels* b = motifs.levels(partner) + facing.rightStart;
        const std::array<int, 4> distances = {distance(a, b, columns), distance(a, b + rightLength, columns),
                                              distance(a + left.length, b, columns),
                                              distance(a + left.length, b + rightLength, columns)};
        const int smallest = *std::min_element(distances.begin(), distances.end());
        if (smallest > cutoff.greatestDistance(static_cast<std::size_t>(columns))) {
            continue;
        }
        Rivals rivals = 0;
        for (std::size_t n = 0; n < distances.size(); ++n) {
            if (distances[n] <= smallest + rivalDistancePerColumn * columns) {
                rivals |= oneRival << n * bitsPerRival;
            }
        }
        candidates.rivals[candidates.count] = rivals;
        candidates.places[candidates.count] = {partner, static_cast<std::int16_t>(shift),
                                               static_cast<std::uint16_t>(columns)};
        ++candidates.count;
    }
}

void filterShifts(const LeftMotif& left, const Partners& partners, const CutoffTable& cutoff, Candidates& candidates) {
    for (std::size_t lane = 0; lane < kernelLanes; ++lane) {
        if ((partners.lanes >> lane & 1U) != 0) {
            filterPartner(left, partners.motifs, partners.group.motifs[lane], cutoff, candidates);
        }
    }
}

std::int64_t sumOf(const KernelColumn* left, const KernelColumn* right, int columns) {
    std::int64_t sum = 0;
    for (int k = 0; k < columns; ++k) {
        for (std::size_t base = 0; base < 4; ++base) {
            const double cell = 1.0 - std::fabs(left[k].values[base] - right[k].values[base]);
            sum += static_cast<std::int64_t>(cell * 0x1p53);
        }
    }
    return sum;
}

void sumCells(const Facing* items, std::size_t count, std::int64_t* sums) {
    std::transform(items, items + count, sums,
                   [](const Facing& item) { return sumOf(item.left, item.right, item.columns); });
}

}  // namespace

CodeSteps portableSteps() {
    return {filterShifts, sumCells};
}

#ifndef __x86_64__

// Other processors have only the portable code.
CodeSteps avx2Steps() {
    return portableSteps();
}
bool hasAvx2() {
    return false;
}
CodeSteps avx512Steps() {
    return portableSteps();
}
bool hasAvx512() {
    return false;
}

#endif

}  // namespace varnolix::kernel
