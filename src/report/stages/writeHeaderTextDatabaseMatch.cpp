#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderTextDatabaseMatch() {
    writeTextHeader(reports::database);
}

}  // namespace varnolix
