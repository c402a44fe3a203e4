#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeFooterTextWithoutMotifDatabaseMatch() {
    writeTextFooter(reports::databaseBrief);
}

}  // namespace varnolix
