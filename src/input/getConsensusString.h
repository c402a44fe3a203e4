#pragma once

#include <string>

#include "run/shared_records.h"

namespace varnolix {

/// IUPAC consensus, one letter per position. A position whose two best bases both hold half or more but whose best is
/// not twice the second (possible only where the sum exceeds 1) gives no letter.
std::string getConsensusString(const Matrix& matrix);

}  // namespace varnolix
