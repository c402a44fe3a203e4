#include "report/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeHeaderGlobalHTMLOrPDFDatabaseMatch() {
    writePageHeader(reports::databaseGlobalPage, PageStyle::others);
}

}  // namespace varnolix
