#include "tree/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDFPhylogeneticTreeGlobal() {
    convertPage(pages::globalTree);
}

}  // namespace varnolix
