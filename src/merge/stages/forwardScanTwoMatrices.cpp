#include "merge/stages.h"

namespace varnolix {

std::vector<dataCombinedScore> forwardScanTwoMatrices(const Matrix& matrix1, const Matrix& matrix2,
                                                      const CutoffTable& cutoff) {
    return scanTwoMatrices(matrix1, matrix2, Direction::forward, cutoff);
}

}  // namespace varnolix
