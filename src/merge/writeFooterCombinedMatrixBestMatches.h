#pragma once

namespace varnolix {

/// Appends the footer to the combined report of the best matches of each motif.
void writeFooterCombinedMatrixBestMatches();

}  // namespace varnolix
