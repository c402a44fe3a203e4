#include "report/stages.h"

#include "report/page/result_page.h"
#include "report/text/result_text.h"

namespace varnolix {

void WriteTopResultsGlobalMatchingListHTML(const std::vector<dataCombinedScore>& list, long id) {
    writeResultPageList(reports::globalPage, PageKind::globalMatching, list, topMode, id);
}

}  // namespace varnolix
