#pragma once

#include "merge/matrix_placement.h"
#include "run/shared_records.h"

namespace varnolix {

/// Places two matrices on one axis and merges them. A column that only one of them covers is copied. Where both do,
/// each cell becomes (cell1 + cell2) * 0.5, no matter how many motifs the first matrix was merged from. Columns that
/// neither covers are left out, and parts beyond the axis are cut off. Nothing is normalised.
/// @param matrix1,matrix2 in the orientations in which they are merged
/// @param alignment with the lengths of these matrices
Matrix combinedTwoMatrices(const Matrix& matrix1, const Matrix& matrix2, const PairAlignment& alignment);

}  // namespace varnolix
