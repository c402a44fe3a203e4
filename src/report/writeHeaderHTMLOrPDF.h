#pragma once

namespace varnolix {

/// Empties the page of the motif-against-motif results and writes its header.
void writeHeaderHTMLOrPDF();

}  // namespace varnolix
