#pragma once

namespace varnolix {

/// Empties the text report of the matches against the reference collection and writes its header.
void writeHeaderTextDatabaseMatch();

}  // namespace varnolix
