#include "report/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeFooterHTMLOrPDF() {
    writePageFooter(reports::fullPage);
}

}  // namespace varnolix
