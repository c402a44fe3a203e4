#pragma once

namespace varnolix {

/// Appends the footer to the text report of the motif-against-motif results without matrices.
void writeFooterTextWithoutMotif();

}  // namespace varnolix
