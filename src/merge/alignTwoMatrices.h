#pragma once

#include <string>

#include "merge/matrix_placement.h"
#include "run/shared_records.h"

namespace varnolix {

/// Draws two matrices as their consensus strings, each on a line of hyphens, with "_" between the lines. A line is as
/// long as the axis. There is one exception: if both matrices stick out, the second one is longer and moved, and the
/// overlap does not follow from the first one's length, then the second length and the shift are added to the length of
/// the lines. Text beyond the end of a line is cut off.
std::string alignTwoMatrices(const Matrix& matrix1, const Matrix& matrix2, const PairAlignment& alignment);

}  // namespace varnolix
