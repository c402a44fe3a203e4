#include "tree/stages.h"

#include "tree/tree_page.h"
#include "tree/tree_plot.h"

namespace varnolix {

void writePhylogeneticTreeGlobalHTMLOrPDF() {
    writeTreeBox(reports::treeGlobal,
                 numFile == 1 ? singleFileBox()
                              : treeBox("Phylogenetic Tree for Global Significant Motifs and Their Best Matches",
                                        globalTree.image));
}

}  // namespace varnolix
