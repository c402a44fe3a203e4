#pragma once

#include <cstdint>
#include <limits>

#include "scan/kernel/kernel_motifs.h"

// Sums of cells as 64-bit integers, in units of 2^-53, and their means. For x, y in [0, 1] a cell c = RN(1 - RN|x - y|)
// is a multiple of 2^-53: with d = RN|x - y|, if d <= 1/2 then c lies in [1/2, 1], where doubles are that far apart;
// otherwise d is itself a multiple of 2^-53 and 1 - d is exact. At most 4 * 255 cells of at most 2^53 units stay below
// 2^63. So 64-bit integers hold their sum exactly, in any order of addition. So does an accumulator of extended
// precision, and both are the same number.

namespace varnolix::kernel {

inline constexpr int cellsPerColumn = 4;
inline constexpr int levelsPerOne = std::numeric_limits<std::uint8_t>::max();
inline constexpr double unit = 0x1p-53;

/// Extended precision must hold sums of 63 bits, as the 64-bit integers do.
inline constexpr bool hasExtendedPrecision = std::numeric_limits<long double>::digits >= 64;

/// In the units of the sum: scaling by a power of two commutes with rounding.
inline double meanInUnits(std::int64_t sum, int columns) {
    return static_cast<double>(static_cast<long double>(sum) / static_cast<long double>(cellsPerColumn * columns));
}

inline double meanScore(std::int64_t sum, int columns) {
    return meanInUnits(sum, columns) * unit;
}

/// Whether the mean of the first sum is greater than that of the second.
inline bool isBetter(std::int64_t sum, std::int64_t best, int columns) {
    const std::int64_t hidden = std::int64_t{2} * cellsPerColumn * columns;
    const std::int64_t lead = sum - best;
    return lead > hidden || (lead > 0 && meanInUnits(sum, columns) > meanInUnits(best, columns));
}

// The largest possible sum fits the type.
static_assert(std::uint64_t{cellsPerColumn * mostKernelColumns} << 53U <=
              static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()));

inline std::int64_t mostUnits(int columns) {
    return static_cast<std::int64_t>(cellsPerColumn * columns) << 53;
}

}  // namespace varnolix::kernel
