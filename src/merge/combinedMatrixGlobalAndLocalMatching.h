#pragma once

#include "run/shared_records.h"

namespace varnolix {

/// Merges a group of the matching within and across files.
/// Reads: Datasets, simCutoff, overlap. Uses: mergedMatrix, mergedMotifListGlobalAndLocal. Appends to:
/// mergedMotifGlobalAndLocalMatching.
void combinedMatrixGlobalAndLocalMatching(const std::vector<dataCombinedScore>& group);

}  // namespace varnolix
