#include "report/writeFooterTextDatabaseMatch.h"

#include "report/text_frame.h"

namespace varnolix {

void writeFooterTextDatabaseMatch() {
    writeTextFooter(reports::database);
}

}  // namespace varnolix
