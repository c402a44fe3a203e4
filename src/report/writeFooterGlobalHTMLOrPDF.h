#pragma once

namespace varnolix {

/// Appends the footer to the page of the global matching.
void writeFooterGlobalHTMLOrPDF();

}  // namespace varnolix
