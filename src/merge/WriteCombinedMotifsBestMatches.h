#pragma once

namespace varnolix {

/// Appends the merged groups of the best matches of each motif to their combined report.
void WriteCombinedMotifsBestMatches();

}  // namespace varnolix
