#include "rank/stages.h"

#include "rank/collection_ranking.h"
#include "report/stages.h"

namespace varnolix {

void getDatabaseGlobalResultsList() {
    writeCollectionSections(collectionRecords(DatasetsCombinedScoreDatabaseGlobalLists), ListKind::collectionGlobal,
                            Datasets, DatabaseDatasets, numBestMatches,
                            {{reports::databaseGlobal, PassForm::text, WriteDatabaseTopResultsGlobalList},
                             {reports::databaseGlobalPage, PassForm::page, WriteDatabaseTopResultsGlobalListHTML}});
}

}  // namespace varnolix
