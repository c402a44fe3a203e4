#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "scan/kernel/kernel_motifs.h"

namespace varnolix {

/// What alignments of each length must reach to be kept. Computed once before a scan.
class CutoffTable {
  public:
    explicit CutoffTable(double cutoff);

    /// Least sum of cells, in units of 2^-53, whose mean reaches the cutoff.
    std::int64_t leastSum(std::size_t columns) const { return leastSums_[columns]; }
    /// Largest distance in the levels of the filter that can belong to such a sum; negative if none can.
    std::int32_t greatestDistance(std::size_t columns) const { return greatestDistances_[columns]; }

  private:
    std::array<std::int64_t, mostKernelColumns + 1> leastSums_;
    std::array<std::int32_t, mostKernelColumns + 1> greatestDistances_;
};

}  // namespace varnolix
