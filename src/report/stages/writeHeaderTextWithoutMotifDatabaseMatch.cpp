#include "report/stages.h"

#include "report/text/text_frame.h"

namespace varnolix {

void writeHeaderTextWithoutMotifDatabaseMatch() {
    writeTextHeader(reports::databaseBrief);
}

}  // namespace varnolix
