#include "report/stages.h"

#include "report/text/result_text.h"

namespace varnolix {

void WriteDatabaseTopResultsListWithoutMotif(const std::vector<dataCombinedScore>& list, int mode, long id) {
    writeResultList(reports::databaseBrief, {MotifDetail::consensus, ComparedWith::collection}, list, mode, id);
}

}  // namespace varnolix
