#include "report/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDF() {
    convertPage("HTML_Results");
}

}  // namespace varnolix
