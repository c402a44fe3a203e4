#include "report/writeHeaderText.h"

#include "report/text_frame.h"

namespace varnolix {

void writeHeaderText() {
    writeTextHeader(reports::full);
}

}  // namespace varnolix
