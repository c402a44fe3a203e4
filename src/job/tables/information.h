#pragma once

#include "run/shared_records.h"

namespace varnolix::job {

/// The sum of 2 + p log2 p over the bases of all columns, in bits.
double informationBits(const Matrix& matrix);

}  // namespace varnolix::job
