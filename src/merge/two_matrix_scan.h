#pragma once

#include <vector>

#include "run/shared_records.h"
#include "scan/alignment_limits.h"

namespace varnolix {

/// The records of one direction of two matrices: first those in which the first matrix slides ("Y"), then those in
/// which the second one does, each in order of ascending offsets. They are then sorted by `comparison`, stably; no
/// record has a combinedScore yet, so they all compare equal and keep this order. The ids are 1 and 2 in every record,
/// and the formats follow the label as in the scans of motif pairs. A matrix with too few columns gives no record.
std::vector<dataCombinedScore> scanTwoMatrices(const Matrix& matrix1, const Matrix& matrix2, Direction direction,
                                               const AlignmentLimits& limits);

}  // namespace varnolix
