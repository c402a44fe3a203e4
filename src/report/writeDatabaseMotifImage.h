#pragma once

#include "run/shared_records.h"

namespace varnolix {

/// Makes both logos of the reference motif with this number.
void writeDatabaseMotifImage(const Matrix& matrix, long id);

}  // namespace varnolix
