#pragma once

namespace varnolix {

/// Gives each record its combinedScore, by the bounds of the motif that its list belongs to.
/// Reads: maxScoresDatabaseList. Changes: DatasetsCombinedScoreDatabaseLists.
void calculateSumScoresCompareDatabase();

}  // namespace varnolix
