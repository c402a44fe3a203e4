#include "report/stages.h"

#include "report/text/result_text.h"

namespace varnolix {

void WriteDatabaseTopResultsGlobalList(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultList(reports::databaseGlobal, {MotifDetail::matrices, ComparedWith::collection}, list, mode, id);
}

}  // namespace varnolix
