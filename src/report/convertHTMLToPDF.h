#pragma once

namespace varnolix {

/// Converts the page of the motif-against-motif results to PDF.
void convertHTMLToPDF();

}  // namespace varnolix
