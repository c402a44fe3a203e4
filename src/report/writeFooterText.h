#pragma once

namespace varnolix {

/// Appends the footer to the text report of the motif-against-motif results.
void writeFooterText();

}  // namespace varnolix
