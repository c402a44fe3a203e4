#include "report/writeHeaderHTMLOrPDF.h"

#include "report/page_frame.h"

namespace varnolix {

void writeHeaderHTMLOrPDF() {
    writePageHeader(reports::fullPage, PageStyle::motifs);
}

}  // namespace varnolix
