#include "report/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDF() {
    convertPage(pages::full);
}

}  // namespace varnolix
