#pragma once

namespace varnolix {

/// Appends the footer to the text report of the global matching against the reference collection.
void writeFooterGlobalTextDatabaseMatch();

}  // namespace varnolix
