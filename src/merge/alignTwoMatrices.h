#pragma once

#include <string>

#include "merge/matrix_placement.h"
#include "run/shared_records.h"

namespace varnolix {

/// Draws two matrices as their consensus strings on lines of hyphens, joined by "_". The lines are as long as the axis;
/// where both stick out, the second matrix is longer and moved and the overlap is not what the first one's length
/// tells, they are longer by the second length and the shift. Text beyond a line is cut off.
std::string alignTwoMatrices(const Matrix& matrix1, const Matrix& matrix2, const PairAlignment& alignment);

}  // namespace varnolix
