#include "merge/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeFooterCombinedMatrixGlobal() {
    writeTextFooter(reports::combinedGlobal);
}

}  // namespace varnolix
