#include "tree/stages.h"

#include "tree/tree_page.h"

namespace varnolix {

void writeFooterPhylogeneticTreeGlobalHTMLOrPDF() {
    writeTreeFooter(reports::treeGlobal);
}

}  // namespace varnolix
