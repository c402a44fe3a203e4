#pragma once

namespace varnolix {

/// Empties the text report of the motif-against-motif results and writes its header.
void writeHeaderText();

}  // namespace varnolix
