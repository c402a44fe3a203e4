#pragma once

#include <vector>

#include "run/shared_records.h"

// Merges a top motif with its best matches, one at a time, in ranked order. The three families of groups share this and
// differ by their lists only; they also share the work record mergedMatrix, whose drawing lines live on in the records
// of members left out.

namespace varnolix {

/// Merges one group.
/// @param steps the steps of the group under work; empty again afterwards
/// @param mergedGroups takes the steps, if there are any
void mergeGroup(const std::vector<dataCombinedScore>& group, std::vector<combinedMatrices>& steps,
                std::vector<std::vector<combinedMatrices>>& mergedGroups);

}  // namespace varnolix
