#include "tree/writeHeaderPhylogeneticTreeGlobalHTMLOrPDF.h"

#include "report/page_frame.h"

namespace varnolix {

void writeHeaderPhylogeneticTreeGlobalHTMLOrPDF() {
    writePageHeader(reports::treeGlobal, PageStyle::motifs);
}

}  // namespace varnolix
