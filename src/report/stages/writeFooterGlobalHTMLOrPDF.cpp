#include "report/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeFooterGlobalHTMLOrPDF() {
    writePageFooter(reports::globalPage);
}

}  // namespace varnolix
