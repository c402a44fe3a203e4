#include "report/writeFooterGlobalText.h"

#include "report/text_frame.h"

namespace varnolix {

void writeFooterGlobalText() {
    writeTextFooter(reports::global);
}

}  // namespace varnolix
