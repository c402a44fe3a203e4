#include "report/writeFooterTextWithoutMotif.h"

#include "report/text_frame.h"

namespace varnolix {

void writeFooterTextWithoutMotif() {
    writeTextFooter(reports::brief);
}

}  // namespace varnolix
