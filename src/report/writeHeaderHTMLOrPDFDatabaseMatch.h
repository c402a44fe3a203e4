#pragma once

namespace varnolix {

/// Empties the page of the matches against the reference collection and writes its header.
void writeHeaderHTMLOrPDFDatabaseMatch();

}  // namespace varnolix
