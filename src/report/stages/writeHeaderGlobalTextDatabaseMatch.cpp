#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderGlobalTextDatabaseMatch() {
    writeTextHeader(reports::databaseGlobal);
}

}  // namespace varnolix
