#pragma once

namespace varnolix {

/// Finds for each input motif the best score and the longest overlap of the records that name it. Both motifs of a
/// record count. Reads: DatasetsCombinedScoreLists. Fills: maxScoresList, indexed by matrixID - 1.
void getMaxScores();

}  // namespace varnolix
