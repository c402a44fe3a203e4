#pragma once

namespace varnolix {

/// Appends the footer to the tree page of all motifs by their matches across files.
void writeFooterPhylogeneticTreeGlobalHTMLOrPDF();

}  // namespace varnolix
