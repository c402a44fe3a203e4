#pragma once

#include "run/shared_records.h"

namespace varnolix {

/// Merges a group of the matching across files.
/// Reads: Datasets, simCutoff, overlap. Uses: mergedMatrix, mergedMotifList. Appends to: mergedMotifGlobalMatching.
void combinedMatrixGlobalMatching(const std::vector<dataCombinedScore>& group);

}  // namespace varnolix
