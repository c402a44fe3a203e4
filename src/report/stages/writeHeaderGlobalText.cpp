#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderGlobalText() {
    writeTextHeader(reports::global);
}

}  // namespace varnolix
