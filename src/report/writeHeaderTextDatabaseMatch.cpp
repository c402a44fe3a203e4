#include "report/writeHeaderTextDatabaseMatch.h"

#include "report/text_frame.h"

namespace varnolix {

void writeHeaderTextDatabaseMatch() {
    writeTextHeader(reports::database);
}

}  // namespace varnolix
