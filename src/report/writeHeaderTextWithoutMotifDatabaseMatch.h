#pragma once

namespace varnolix {

/// Empties the text report of the matches against the reference collection without matrices and writes its header.
void writeHeaderTextWithoutMotifDatabaseMatch();

}  // namespace varnolix
