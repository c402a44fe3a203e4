#pragma once

namespace varnolix {

/// Appends the footer to the text report of the matches against the reference collection.
void writeFooterTextDatabaseMatch();

}  // namespace varnolix
