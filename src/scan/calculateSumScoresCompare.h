#pragma once

namespace varnolix {

/// Gives each record its combinedScore, by the bounds of the motif that its list belongs to.
/// Reads: maxScoresList. Changes: DatasetsCombinedScoreLists.
void calculateSumScoresCompare();

}  // namespace varnolix
