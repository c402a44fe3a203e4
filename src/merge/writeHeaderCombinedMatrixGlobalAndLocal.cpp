#include "merge/writeHeaderCombinedMatrixGlobalAndLocal.h"

#include "report/text_frame.h"

namespace varnolix {

void writeHeaderCombinedMatrixGlobalAndLocal() {
    writeTextHeader(reports::combinedGlobalAndLocal);
}

}  // namespace varnolix
