#pragma once

#include "run/shared_records.h"

namespace varnolix {

/// Makes both logos of the input motif with this number.
void writeMotifImage(const Matrix& matrix, long id);

}  // namespace varnolix
