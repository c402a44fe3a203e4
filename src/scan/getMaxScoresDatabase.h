#pragma once

namespace varnolix {

/// Finds for each input motif the best score and the longest overlap of the records that name it. Only the input motif
/// of a record counts. Reads: DatasetsCombinedScoreDatabaseLists. Fills: maxScoresDatabaseList, indexed by matrixID
/// - 1.
void getMaxScoresDatabase();

}  // namespace varnolix
