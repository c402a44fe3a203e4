#include "merge/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeFooterCombinedMatrixBestMatches() {
    writeTextFooter(reports::combinedBestMatches);
}

}  // namespace varnolix
