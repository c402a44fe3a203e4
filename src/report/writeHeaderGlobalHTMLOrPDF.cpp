#include "report/writeHeaderGlobalHTMLOrPDF.h"

#include "report/page_frame.h"

namespace varnolix {

void writeHeaderGlobalHTMLOrPDF() {
    writePageHeader(reports::globalPage, PageStyle::others);
}

}  // namespace varnolix
