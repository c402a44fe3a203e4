#include "report/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDFGlobalDatabaseMatch() {
    convertPage("HTML_Results_Database_Matching_Global_Matching");
}

}  // namespace varnolix
