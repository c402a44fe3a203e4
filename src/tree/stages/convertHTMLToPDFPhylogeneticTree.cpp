#include "tree/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDFPhylogeneticTree() {
    convertPage(pages::tree);
}

}  // namespace varnolix
