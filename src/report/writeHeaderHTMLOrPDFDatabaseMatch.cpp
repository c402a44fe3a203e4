#include "report/writeHeaderHTMLOrPDFDatabaseMatch.h"

#include "report/page_frame.h"

namespace varnolix {

void writeHeaderHTMLOrPDFDatabaseMatch() {
    writePageHeader(reports::databasePage, PageStyle::others);
}

}  // namespace varnolix
