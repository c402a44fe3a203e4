#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderTextWithoutMotif() {
    writeTextHeader(reports::brief);
}

}  // namespace varnolix
