#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeFooterTextDatabaseMatch() {
    writeTextFooter(reports::database);
}

}  // namespace varnolix
