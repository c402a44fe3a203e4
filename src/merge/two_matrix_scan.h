#pragma once

#include <vector>

#include "run/shared_records.h"
#include "scan/kernel/pair_kernel.h"

namespace varnolix {

/// The records of one direction of two matrices: first those in which the first matrix slides ("Y"), then those in
/// which the second one does, each by ascending offset; then sorted by `comparison`. As no record has a combinedScore
/// yet, all are equal to that sort, which leaves up to 16 records as they are and scrambles longer lists, always in the
/// same way. Ids are 1 and 2 in this order in every record; formats follow the label as in the scans of motif pairs. A
/// matrix with fewer columns than overlap gives no record.
std::vector<dataCombinedScore> scanTwoMatrices(const Matrix& matrix1, const Matrix& matrix2, Direction direction,
                                               const CutoffTable& cutoff);

}  // namespace varnolix
