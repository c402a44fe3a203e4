#include "report/writeHeaderGlobalHTMLOrPDFDatabaseMatch.h"

#include "report/page_frame.h"

namespace varnolix {

void writeHeaderGlobalHTMLOrPDFDatabaseMatch() {
    writePageHeader(reports::databaseGlobalPage, PageStyle::others);
}

}  // namespace varnolix
