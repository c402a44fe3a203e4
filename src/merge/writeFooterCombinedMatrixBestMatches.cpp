#include "merge/writeFooterCombinedMatrixBestMatches.h"

#include "report/text_frame.h"

namespace varnolix {

void writeFooterCombinedMatrixBestMatches() {
    writeTextFooter(reports::combinedBestMatches);
}

}  // namespace varnolix
