#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderText() {
    writeTextHeader(reports::full);
}

}  // namespace varnolix
