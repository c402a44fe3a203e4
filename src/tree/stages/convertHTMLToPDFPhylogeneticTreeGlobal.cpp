#include "tree/stages.h"

#include "report/pdf_conversion.h"

namespace varnolix {

void convertHTMLToPDFPhylogeneticTreeGlobal() {
    convertPage("Global_Matching_Phylogenetic_Tree");
}

}  // namespace varnolix
