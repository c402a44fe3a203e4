#include "report/writeHeaderTextWithoutMotif.h"

#include "report/text_frame.h"

namespace varnolix {

void writeHeaderTextWithoutMotif() {
    writeTextHeader(reports::brief);
}

}  // namespace varnolix
