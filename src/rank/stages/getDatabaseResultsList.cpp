#include "rank/stages.h"

#include "rank/collection_ranking.h"
#include "report/stages.h"

namespace varnolix {

void getDatabaseResultsList() {
    if (outputFileType != "All") return;
    // The scans left no lists where the records are too many to hold.
    const RecordSource source = DatasetsCombinedScoreDatabaseLists.empty()
                                    ? remadeCollectionRecords(Datasets, DatabaseDatasets, simCutoff)
                                    : heldCollectionRecords(DatasetsCombinedScoreDatabaseLists);
    writeCollectionSections(source, {{reports::database, PassForm::text, WriteDatabaseTopResultsList},
                                     {reports::databaseBrief, PassForm::brief, WriteDatabaseTopResultsListWithoutMotif},
                                     {reports::databasePage, PassForm::page, WriteDatabaseTopResultsListHTML}});
}

}  // namespace varnolix
