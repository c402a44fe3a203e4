#include "merge/writeFooterCombinedMatrixGlobal.h"

#include "report/text_frame.h"

namespace varnolix {

void writeFooterCombinedMatrixGlobal() {
    writeTextFooter(reports::combinedGlobal);
}

}  // namespace varnolix
