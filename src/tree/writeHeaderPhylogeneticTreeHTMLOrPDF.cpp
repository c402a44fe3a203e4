#include "tree/writeHeaderPhylogeneticTreeHTMLOrPDF.h"

#include "report/page_frame.h"

namespace varnolix {

void writeHeaderPhylogeneticTreeHTMLOrPDF() {
    writePageHeader(reports::tree, PageStyle::motifs);
}

}  // namespace varnolix
