#include "tree/stages.h"

#include "tree/tree_page.h"
#include "tree/tree_plot.h"

namespace varnolix {

void writePhylogeneticTreeHTMLOrPDF() {
    writeTreeBox(reports::tree, treeBox("Phylogenetic Tree for Motifs in the Combined List", listTree.image));
}

}  // namespace varnolix
