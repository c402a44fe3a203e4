#pragma once

namespace varnolix {

/// Converts the page of the global matching against the reference collection to PDF.
void convertHTMLToPDFGlobalDatabaseMatch();

}  // namespace varnolix
