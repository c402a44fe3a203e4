#include "report/writeFooterHTMLOrPDFDatabaseMatch.h"

#include "report/page_frame.h"

namespace varnolix {

void writeFooterHTMLOrPDFDatabaseMatch() {
    writePageFooter(reports::databasePage);
}

}  // namespace varnolix
