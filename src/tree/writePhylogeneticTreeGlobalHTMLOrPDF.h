#pragma once

namespace varnolix {

/// Appends the tree of all motifs by their matches across files to its page, or a note where there is one motif file.
void writePhylogeneticTreeGlobalHTMLOrPDF();

}  // namespace varnolix
