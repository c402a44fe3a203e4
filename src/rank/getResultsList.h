#pragma once

namespace varnolix {

/// Turns the records into the answers of the reports: the best matches of each motif, the ranking of the motifs, and
/// the groups of the top motifs; then writes the result sections into the reports. Reads: DatasetsCombinedScoreLists,
/// Datasets, numFile, numBestMatches, numTopMotif, the output answers. Fills: commonBestScoreResultList,
/// globalMatchingScoreResultList, the three lists of groups, and where the tree is asked for distanceMatrix,
/// distanceMatrixGlobal and maxSumScoreCompare.
void getResultsList();

}  // namespace varnolix
