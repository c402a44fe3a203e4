#include "report/writeFooterTextWithoutMotifDatabaseMatch.h"

#include "report/text_frame.h"

namespace varnolix {

void writeFooterTextWithoutMotifDatabaseMatch() {
    writeTextFooter(reports::databaseBrief);
}

}  // namespace varnolix
