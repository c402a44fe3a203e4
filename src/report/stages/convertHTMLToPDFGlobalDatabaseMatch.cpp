#include "report/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDFGlobalDatabaseMatch() {
    convertPage(pages::databaseGlobal);
}

}  // namespace varnolix
