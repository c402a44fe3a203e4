#include "report/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDFGlobal() {
    convertPage(pages::global);
}

}  // namespace varnolix
