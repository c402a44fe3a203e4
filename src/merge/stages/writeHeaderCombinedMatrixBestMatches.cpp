#include "merge/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderCombinedMatrixBestMatches() {
    writeTextHeader(reports::combinedBestMatches);
}

}  // namespace varnolix
