#pragma once

// The stages that draw the trees and write their pages, in the order of the run. Each has a source file of its own name
// in stages/.

namespace varnolix {

/// Begins the page of the tree across files.
void writeHeaderPhylogeneticTreeGlobalHTMLOrPDF();
/// Begins the page of the tree of all motifs.
void writeHeaderPhylogeneticTreeHTMLOrPDF();

/// Writes the distance table across files and has R draw its tree.
void getMotifClusterGlobal();
/// Appends this tree to its page, or a note instead if there is only one input file.
void writePhylogeneticTreeGlobalHTMLOrPDF();
/// Writes the distance table of all motifs and has R draw its tree.
void getMotifCluster();
/// Appends this tree to its page.
void writePhylogeneticTreeHTMLOrPDF();

/// Ends the page of the tree across files.
void writeFooterPhylogeneticTreeGlobalHTMLOrPDF();
/// Ends the page of the tree of all motifs.
void writeFooterPhylogeneticTreeHTMLOrPDF();

/// Asks for the conversion of the page of the tree across files.
void convertHTMLToPDFPhylogeneticTreeGlobal();
/// Asks for that of the tree of all motifs.
void convertHTMLToPDFPhylogeneticTree();

}  // namespace varnolix
