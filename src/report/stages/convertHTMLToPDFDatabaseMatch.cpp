#include "report/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDFDatabaseMatch() {
    convertPage(pages::database);
}

}  // namespace varnolix
