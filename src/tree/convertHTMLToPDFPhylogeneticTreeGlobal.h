#pragma once

namespace varnolix {

/// Converts the tree page of all motifs by their matches across files to PDF.
void convertHTMLToPDFPhylogeneticTreeGlobal();

}  // namespace varnolix
