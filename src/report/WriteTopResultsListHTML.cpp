#include "report/WriteTopResultsListHTML.h"

#include "report/result_page.h"

namespace varnolix {

void WriteTopResultsListHTML(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultPageList(reports::fullPage, PageKind::motifs, list, mode, id);
}

}  // namespace varnolix
