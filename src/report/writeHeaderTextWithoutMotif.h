#pragma once

namespace varnolix {

/// Empties the text report of the motif-against-motif results without matrices and writes its header.
void writeHeaderTextWithoutMotif();

}  // namespace varnolix
