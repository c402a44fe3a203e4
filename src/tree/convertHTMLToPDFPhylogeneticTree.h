#pragma once

namespace varnolix {

/// Converts the tree page of all motifs to PDF.
void convertHTMLToPDFPhylogeneticTree();

}  // namespace varnolix
