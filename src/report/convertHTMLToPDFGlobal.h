#pragma once

namespace varnolix {

/// Converts the page of the global matching to PDF.
void convertHTMLToPDFGlobal();

}  // namespace varnolix
