#pragma once

namespace varnolix {

/// Empties the tree page of all motifs by their matches across files and writes its header.
void writeHeaderPhylogeneticTreeGlobalHTMLOrPDF();

}  // namespace varnolix
