#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeFooterGlobalTextDatabaseMatch() {
    writeTextFooter(reports::databaseGlobal);
}

}  // namespace varnolix
