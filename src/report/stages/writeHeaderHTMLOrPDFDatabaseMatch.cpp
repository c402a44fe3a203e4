#include "report/stages.h"

#include "report/page/page_frame.h"

namespace varnolix {

void writeHeaderHTMLOrPDFDatabaseMatch() {
    writePageHeader(reports::databasePage, PageStyle::others);
}

}  // namespace varnolix
