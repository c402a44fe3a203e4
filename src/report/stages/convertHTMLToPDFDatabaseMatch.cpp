#include "report/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDFDatabaseMatch() {
    convertPage("HTML_Results_Database_Matching");
}

}  // namespace varnolix
