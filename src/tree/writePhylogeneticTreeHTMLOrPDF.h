#pragma once

namespace varnolix {

/// Appends the tree of all motifs to its page.
void writePhylogeneticTreeHTMLOrPDF();

}  // namespace varnolix
