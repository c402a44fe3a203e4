#include "report/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDFGlobal() {
    convertPage("HTML_Global_Matching_Results");
}

}  // namespace varnolix
