#include "report/stages.h"

#include "report/text/result_text.h"

namespace varnolix {

void WriteTopResultsGlobalMatchingList(const std::vector<dataCombinedScore>& list, long id) {
    writeResultList(reports::global, {MotifDetail::matrices, ComparedWith::inputMotifs}, list, topMode, id);
}

}  // namespace varnolix
