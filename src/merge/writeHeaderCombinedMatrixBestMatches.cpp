#include "merge/writeHeaderCombinedMatrixBestMatches.h"

#include "report/text_frame.h"

namespace varnolix {

void writeHeaderCombinedMatrixBestMatches() {
    writeTextHeader(reports::combinedBestMatches);
}

}  // namespace varnolix
