#pragma once

namespace varnolix {

/// Appends the footer to the page of the global matching against the reference collection.
void writeFooterGlobalHTMLOrPDFDatabaseMatch();

}  // namespace varnolix
