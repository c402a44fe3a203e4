#include "report/WriteDatabaseTopResultsList.h"

#include "report/result_text.h"

namespace varnolix {

void WriteDatabaseTopResultsList(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultList(reports::database, {MotifDetail::matrices, ComparedWith::collection}, list, mode, id);
}

}  // namespace varnolix
