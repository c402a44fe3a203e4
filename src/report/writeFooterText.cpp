#include "report/writeFooterText.h"

#include "report/text_frame.h"

namespace varnolix {

void writeFooterText() {
    writeTextFooter(reports::full);
}

}  // namespace varnolix
