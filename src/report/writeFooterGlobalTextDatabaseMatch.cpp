#include "report/writeFooterGlobalTextDatabaseMatch.h"

#include "report/text_frame.h"

namespace varnolix {

void writeFooterGlobalTextDatabaseMatch() {
    writeTextFooter(reports::databaseGlobal);
}

}  // namespace varnolix
