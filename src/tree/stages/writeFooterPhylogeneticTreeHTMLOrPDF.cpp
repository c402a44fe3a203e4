#include "tree/stages.h"

#include "tree/tree_page.h"

namespace varnolix {

void writeFooterPhylogeneticTreeHTMLOrPDF() {
    writeTreeFooter(reports::tree);
}

}  // namespace varnolix
