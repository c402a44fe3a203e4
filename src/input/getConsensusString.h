#pragma once

#include <string>

#include "run/shared_records.h"

namespace varnolix {

/// The IUPAC consensus, one letter per position. A position gives no letter if its best base is above one half, its
/// second best is at least one half, and the best is less than twice the second. That takes a sum of more than 1.
std::string getConsensusString(const Matrix& matrix);

}  // namespace varnolix
