#pragma once

namespace varnolix {

/// Appends the footer to the page of the matches against the reference collection.
void writeFooterHTMLOrPDFDatabaseMatch();

}  // namespace varnolix
