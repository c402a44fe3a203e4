#include "report/WriteDatabaseTopResultsListHTML.h"

#include "report/result_page.h"

namespace varnolix {

void WriteDatabaseTopResultsListHTML(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultPageList(reports::databasePage, PageKind::collection, list, mode, id);
}

}  // namespace varnolix
