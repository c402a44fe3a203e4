#include "report/stages.h"

#include "report/text/result_text.h"

namespace varnolix {

void WriteTopResultsList(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultList(reports::full, {MotifDetail::matrices, ComparedWith::inputMotifs}, list, mode, id);
}

}  // namespace varnolix
