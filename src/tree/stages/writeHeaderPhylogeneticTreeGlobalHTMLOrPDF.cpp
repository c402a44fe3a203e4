#include "tree/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeHeaderPhylogeneticTreeGlobalHTMLOrPDF() {
    writePageHeader(reports::treeGlobal, PageStyle::motifs);
}

}  // namespace varnolix
