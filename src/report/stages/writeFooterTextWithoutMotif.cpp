#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeFooterTextWithoutMotif() {
    writeTextFooter(reports::brief);
}

}  // namespace varnolix
