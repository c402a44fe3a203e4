#include "rank/stages.h"

#include "rank/collection_ranking.h"
#include "report/stages.h"

namespace varnolix {

void getDatabaseResultsList() {
    if (outputFileType != "All") return;
    writeCollectionSections(collectionRecords(DatasetsCombinedScoreDatabaseLists), ListKind::collection, Datasets,
                            DatabaseDatasets, numBestMatches,
                            {{reports::database, PassForm::text, WriteDatabaseTopResultsList},
                             {reports::databaseBrief, PassForm::brief, WriteDatabaseTopResultsListWithoutMotif},
                             {reports::databasePage, PassForm::page, WriteDatabaseTopResultsListHTML}});
}

}  // namespace varnolix
