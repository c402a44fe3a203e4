#pragma once

#include "run/shared_records.h"

namespace varnolix {

/// Orders records from the most to the least significant: the lowest combinedScore first.
inline bool comparison(const dataCombinedScore& left, const dataCombinedScore& right) {
    return left.combinedScore < right.combinedScore;
}

}  // namespace varnolix
