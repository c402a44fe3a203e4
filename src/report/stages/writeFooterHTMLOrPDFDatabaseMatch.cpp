#include "report/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeFooterHTMLOrPDFDatabaseMatch() {
    writePageFooter(reports::databasePage);
}

}  // namespace varnolix
