#include "report/writeHeaderTextWithoutMotifDatabaseMatch.h"

#include "report/text_frame.h"

namespace varnolix {

void writeHeaderTextWithoutMotifDatabaseMatch() {
    writeTextHeader(reports::databaseBrief);
}

}  // namespace varnolix
