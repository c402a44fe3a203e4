#include "report/writeFooterHTMLOrPDF.h"

#include "report/page_frame.h"

namespace varnolix {

void writeFooterHTMLOrPDF() {
    writePageFooter(reports::fullPage);
}

}  // namespace varnolix
