#include "report/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeFooterGlobalHTMLOrPDFDatabaseMatch() {
    writePageFooter(reports::databaseGlobalPage);
}

}  // namespace varnolix
