#pragma once

#include "run/shared_records.h"

namespace varnolix {

/// The motif of the opposite strand. The positions are reversed, and in each position one pair of cells is swapped: A
/// with T, or C with G, whichever pair contains the best base. The other two cells stay as they are.
Matrix getRevCompMotif(const Matrix& matrix);

/// Whether the best base of the column is A or T, so that this pair is swapped. Of equal maxima the first one counts;
/// if no value is above 0, A does.
bool swapsAT(const Column& column);

}  // namespace varnolix
