#include "report/stages.h"

#include "report/page/result_page.h"

namespace varnolix {

void WriteDatabaseTopResultsListHTML(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultPageList(reports::databasePage, PageKind::collection, list, mode, id);
}

}  // namespace varnolix
