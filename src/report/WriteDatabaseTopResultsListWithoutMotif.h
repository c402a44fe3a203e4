#pragma once

#include <vector>

#include "run/shared_records.h"

namespace varnolix {

/// Appends the best matches of the motif with this id to the text report of the reference collection without matrices.
void WriteDatabaseTopResultsListWithoutMotif(const std::vector<dataCombinedScore>& list, int mode, long id);

}  // namespace varnolix
