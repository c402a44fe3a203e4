#pragma once

#include <vector>

#include "run/shared_records.h"

namespace varnolix {

/// Appends the best matches of the motif with this id to the global matching text report.
void WriteTopResultsGlobalMatchingList(const std::vector<dataCombinedScore>& list, long id);

}  // namespace varnolix
