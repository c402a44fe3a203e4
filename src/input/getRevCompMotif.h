#pragma once

#include "run/shared_records.h"

namespace varnolix {

/// The motif of the opposite strand: positions reversed, and in each position only the pair that holds its best base is
/// swapped (A with T or C with G); the cells of the other pair stay.
Matrix getRevCompMotif(const Matrix& matrix);

/// True where the best base of the column is A or T, so that this pair swaps. The first of equal maxima counts, and A
/// where no value is above 0.
bool swapsAT(const Column& column);

}  // namespace varnolix
