#include "merge/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderCombinedMatrixGlobal() {
    writeTextHeader(reports::combinedGlobal);
    if (numFile != 1) return;
    AppendingReport open(reports::combinedGlobal);
    open.stream() << singleFileNote << '\n';
}

}  // namespace varnolix
