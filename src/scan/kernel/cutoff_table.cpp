#include "scan/kernel/cutoff_table.h"

#include <algorithm>

#include "scan/kernel/exact_sums.h"

// The mean grows with the sum, so for each length the cutoff can be turned into a least sum. Only the sums of kept
// alignments then have to be divided. The bound of the byte filter is derived in pair_kernel.cpp.

namespace varnolix {

using kernel::cellsPerColumn;
using kernel::levelsPerOne;
using kernel::meanScore;
using kernel::mostUnits;
using kernel::unit;

CutoffTable::CutoffTable(double cutoff) {
    leastSums_[0] = 0;
    greatestDistances_[0] = -1;
    for (std::size_t length = 1; length <= mostKernelColumns; ++length) {
        const int columns = static_cast<int>(length);
        const std::int64_t most = mostUnits(columns);
        std::int64_t low = 0;
        std::int64_t high = most + 1;  // out of reach: nothing is kept
        while (low < high) {
            const std::int64_t middle = low + (high - low) / 2;
            if (meanScore(middle, columns) >= cutoff) {
                high = middle;
            } else {
                low = middle + 1;
            }
        }
        leastSums_[length] = low;
        const double cells = cellsPerColumn * columns;
        // One more than the bound, as the bound itself is rounded.
        const double distance = levelsPerOne * (cells - static_cast<double>(low) * unit) + cells + 1.0;
        greatestDistances_[length] = low > most ? -1 : static_cast<std::int32_t>(std::min(distance, 65535.0));
    }
}

}  // namespace varnolix
