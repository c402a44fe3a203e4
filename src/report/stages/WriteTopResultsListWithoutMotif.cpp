#include "report/stages.h"

#include "report/text/result_text.h"

namespace varnolix {

void WriteTopResultsListWithoutMotif(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultList(reports::brief, {MotifDetail::consensus, ComparedWith::inputMotifs}, list, mode, id);
}

}  // namespace varnolix
