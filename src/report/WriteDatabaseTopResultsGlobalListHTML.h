#pragma once

#include <vector>

#include "run/shared_records.h"

namespace varnolix {

/// Appends the best matches of the motif with this id to the global matching page of the reference collection.
void WriteDatabaseTopResultsGlobalListHTML(const std::vector<dataCombinedScore>& list, int mode, long id);

}  // namespace varnolix
