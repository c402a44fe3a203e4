#pragma once

namespace varnolix {

/// Empties the page of the global matching against the reference collection and writes its header.
void writeHeaderGlobalHTMLOrPDFDatabaseMatch();

}  // namespace varnolix
