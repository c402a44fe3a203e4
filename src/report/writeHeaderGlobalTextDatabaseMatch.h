#pragma once

namespace varnolix {

/// Empties the text report of the global matching against the reference collection and writes its header.
void writeHeaderGlobalTextDatabaseMatch();

}  // namespace varnolix
