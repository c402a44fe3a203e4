#include "report/writeFooterGlobalHTMLOrPDFDatabaseMatch.h"

#include "report/page_frame.h"

namespace varnolix {

void writeFooterGlobalHTMLOrPDFDatabaseMatch() {
    writePageFooter(reports::databaseGlobalPage);
}

}  // namespace varnolix
