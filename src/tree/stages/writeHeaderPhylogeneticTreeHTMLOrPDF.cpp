#include "tree/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeHeaderPhylogeneticTreeHTMLOrPDF() {
    writePageHeader(reports::tree, PageStyle::motifs);
}

}  // namespace varnolix
