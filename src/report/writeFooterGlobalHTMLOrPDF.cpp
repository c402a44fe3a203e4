#include "report/writeFooterGlobalHTMLOrPDF.h"

#include "report/page_frame.h"

namespace varnolix {

void writeFooterGlobalHTMLOrPDF() {
    writePageFooter(reports::globalPage);
}

}  // namespace varnolix
