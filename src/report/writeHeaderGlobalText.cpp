#include "report/writeHeaderGlobalText.h"

#include "report/text_frame.h"

namespace varnolix {

void writeHeaderGlobalText() {
    writeTextHeader(reports::global);
}

}  // namespace varnolix
