#pragma once

#include "run/shared_records.h"

namespace varnolix {

/// Merges a group of the best matches of each motif.
/// Reads: Datasets, simCutoff, overlap. Uses: mergedMatrix, mergedMotifListBestMatches. Appends to:
/// mergedMotifBestMatches.
void combinedMatrixBestMatches(const std::vector<dataCombinedScore>& group);

}  // namespace varnolix
