#include "report/stages.h"

#include "report/page/result_page.h"

namespace varnolix {

void WriteDatabaseTopResultsGlobalListHTML(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultPageList(reports::databaseGlobalPage, PageKind::collection, list, mode, id);
}

}  // namespace varnolix
