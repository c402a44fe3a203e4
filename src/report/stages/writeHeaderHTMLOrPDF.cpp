#include "report/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeHeaderHTMLOrPDF() {
    writePageHeader(reports::fullPage, PageStyle::motifs);
}

}  // namespace varnolix
