#pragma once

namespace varnolix {

/// Appends the footer to the page of the motif-against-motif results.
void writeFooterHTMLOrPDF();

}  // namespace varnolix
