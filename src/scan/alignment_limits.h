#pragma once

#include "scan/kernel/cutoff_table.h"

namespace varnolix {

/// Which alignments of two motifs are kept.
struct AlignmentLimits {
    AlignmentLimits(int columns, double bestCell, double leastScore)
        : leastOverlap(columns), perfectCell(bestCell), cutoff(leastScore), cutoffTable(leastScore) {}

    /// Whether the kernel may score under these limits. Its code is written for one smallest overlap and for cells up
    /// to 1; under other limits, the plain form scores every pair.
    bool suitKernel() const { return leastOverlap == static_cast<int>(leastKernelColumns) && perfectCell == 1.0; }

    int leastOverlap;         ///< the smallest number of columns compared
    double perfectCell;       ///< score of a cell in which both motifs agree perfectly
    double cutoff;            ///< the lowest score that is kept
    CutoffTable cutoffTable;  ///< the same cutoff, prepared for the kernel
};

}  // namespace varnolix
