#pragma once

#include "merge/matrix_placement.h"
#include "run/shared_records.h"

namespace varnolix {

/// Lays two matrices on one axis and merges them: a column that one of them covers is copied, where both do each cell
/// is (cell1 + cell2) * 0.5, however many motifs the first one was merged from. Columns that neither covers are left
/// out, parts beyond the axis are cut off. Nothing is normalised.
/// @param alignment the lengths are those of the matrices, which come in the orientation to be merged
Matrix combinedTwoMatrices(const Matrix& matrix1, const Matrix& matrix2, const PairAlignment& alignment);

}  // namespace varnolix
