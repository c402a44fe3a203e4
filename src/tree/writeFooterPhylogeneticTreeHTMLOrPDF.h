#pragma once

namespace varnolix {

/// Appends the footer to the tree page of all motifs.
void writeFooterPhylogeneticTreeHTMLOrPDF();

}  // namespace varnolix
