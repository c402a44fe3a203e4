#pragma once

#include "merge/two_matrix_scan.h"

namespace varnolix {

/// The backward records of two matrices at or above the cutoff, in the order of the two-matrix scan.
std::vector<dataCombinedScore> backwardScanTwoMatrices(const Matrix& matrix1, const Matrix& matrix2,
                                                       const CutoffTable& cutoff);

}  // namespace varnolix
