#include "report/writeHeaderGlobalTextDatabaseMatch.h"

#include "report/text_frame.h"

namespace varnolix {

void writeHeaderGlobalTextDatabaseMatch() {
    writeTextHeader(reports::databaseGlobal);
}

}  // namespace varnolix
