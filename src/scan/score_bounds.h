#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "run/shared_records.h"

// The bounds of a motif, and the sort key, which measures how far a record is from them.

namespace varnolix {

/// Raises the bounds by one record that names the motif.
inline void raiseBounds(maxScores& bounds, int matrixID, double similarityScore, int overlapColumns) {
    bounds.matrixID = matrixID;
    bounds.maxScore = std::max(bounds.maxScore, similarityScore);
    bounds.maxOverlap = std::max(bounds.maxOverlap, overlapColumns);
    bounds.halfOverlapPlus2 = (bounds.maxOverlap + 4) / 2;
}

/// (|score - best score| + |columns - most columns|) * 0.5. The second difference counts whole columns and the first is
/// a fraction, so length decides before score.
inline double combinedScoreOf(double similarityScore, int overlapColumns, const maxScores& bounds) {
    const double scoreDifference = std::fabs(similarityScore - bounds.maxScore);
    const int overlapDifference = std::abs(overlapColumns - bounds.maxOverlap);
    return (scoreDifference + overlapDifference) * 0.5;
}

}  // namespace varnolix
