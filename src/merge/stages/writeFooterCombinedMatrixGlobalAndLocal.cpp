#include "merge/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeFooterCombinedMatrixGlobalAndLocal() {
    writeTextFooter(reports::combinedGlobalAndLocal);
}

}  // namespace varnolix
