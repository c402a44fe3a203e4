#pragma once

namespace varnolix {

/// Converts the page of the matches against the reference collection to PDF.
void convertHTMLToPDFDatabaseMatch();

}  // namespace varnolix
