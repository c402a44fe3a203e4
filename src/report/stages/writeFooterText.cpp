#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeFooterText() {
    writeTextFooter(reports::full);
}

}  // namespace varnolix
