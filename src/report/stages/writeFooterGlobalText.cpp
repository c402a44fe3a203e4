#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeFooterGlobalText() {
    writeTextFooter(reports::global);
}

}  // namespace varnolix
