#include "merge/stages.h"

namespace varnolix {

std::vector<dataCombinedScore> forwardScanTwoMatrices(const Matrix& matrix1, const Matrix& matrix2,
                                                      const AlignmentLimits& limits) {
    return scanTwoMatrices(matrix1, matrix2, Direction::forward, limits);
}

}  // namespace varnolix
