#include "rank/getDatabaseGlobalResultsList.h"

#include "rank/collection_ranking.h"
#include "report/WriteDatabaseTopResultsGlobalList.h"
#include "report/WriteDatabaseTopResultsGlobalListHTML.h"

namespace varnolix {

void getDatabaseGlobalResultsList() {
    writeCollectionSections(heldCollectionRecords(DatasetsCombinedScoreDatabaseGlobalLists),
                            {{reports::databaseGlobal, PassForm::text, WriteDatabaseTopResultsGlobalList},
                             {reports::databaseGlobalPage, PassForm::page, WriteDatabaseTopResultsGlobalListHTML}});
}

}  // namespace varnolix
