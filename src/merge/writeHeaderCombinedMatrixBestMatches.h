#pragma once

namespace varnolix {

/// Empties the combined report of the best matches of each motif and writes its header.
void writeHeaderCombinedMatrixBestMatches();

}  // namespace varnolix
