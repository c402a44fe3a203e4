#include "merge/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderCombinedMatrixGlobal() {
    writeTextHeader(reports::combinedGlobal);
    if (numFile == 1) appendToReport(reports::combinedGlobal, std::string(singleFileNote) + "\n");
}

}  // namespace varnolix
