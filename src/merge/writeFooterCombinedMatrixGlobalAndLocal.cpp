#include "merge/writeFooterCombinedMatrixGlobalAndLocal.h"

#include "report/text_frame.h"

namespace varnolix {

void writeFooterCombinedMatrixGlobalAndLocal() {
    writeTextFooter(reports::combinedGlobalAndLocal);
}

}  // namespace varnolix
