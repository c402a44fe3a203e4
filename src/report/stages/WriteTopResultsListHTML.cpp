#include "report/stages.h"

#include "report/page/result_page.h"

namespace varnolix {

void WriteTopResultsListHTML(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultPageList(reports::fullPage, PageKind::motifs, list, mode, id);
}

}  // namespace varnolix
