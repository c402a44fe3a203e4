#include "merge/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderCombinedMatrixGlobalAndLocal() {
    writeTextHeader(reports::combinedGlobalAndLocal);
}

}  // namespace varnolix
