#pragma once

namespace varnolix {

/// Empties the tree page of all motifs and writes its header.
void writeHeaderPhylogeneticTreeHTMLOrPDF();

}  // namespace varnolix
