#include "report/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeHeaderGlobalHTMLOrPDF() {
    writePageHeader(reports::globalPage, PageStyle::others);
}

}  // namespace varnolix
