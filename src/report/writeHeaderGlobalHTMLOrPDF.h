#pragma once

namespace varnolix {

/// Empties the page of the global matching and writes its header.
void writeHeaderGlobalHTMLOrPDF();

}  // namespace varnolix
