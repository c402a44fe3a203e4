#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "run/shared_records.h"

// Bounds of the motifs, and the sort key that measures how far a record lies from them.

namespace varnolix {

/// Which motifs of a record raise their bounds.
enum class BoundedMotifs {
    both,      ///< the first and the second motif of the record
    listOwner  ///< only the motif that the list belongs to: the input motif, in the lists against a collection
};

/// Raises the bounds by one record that names the motif.
inline void raiseBounds(maxScores& bounds, int matrixID, double similarityScore, int overlapColumns) {
    bounds.matrixID = matrixID;
    bounds.maxScore = std::max(bounds.maxScore, similarityScore);
    bounds.maxOverlap = std::max(bounds.maxOverlap, overlapColumns);
    bounds.halfOverlapPlus2 = (bounds.maxOverlap + 4) / 2;
}

/// The bounds of every motif over the records of all lists; zero entries for motifs without a record.
std::vector<maxScores> boundsOfRecords(const RecordLists& lists, BoundedMotifs bounded, std::size_t motifCount);

/// (|score - best score| + |columns - most columns|) * 0.5. The second difference counts whole columns and the first is
/// a fraction, so length decides before score.
inline double combinedScoreOf(double similarityScore, int overlapColumns, const maxScores& bounds) {
    const double scoreDifference = std::fabs(similarityScore - bounds.maxScore);
    const int overlapDifference = std::abs(overlapColumns - bounds.maxOverlap);
    return (scoreDifference + overlapDifference) * 0.5;
}

/// Gives each record its combinedScore by the bounds of the motif that its list belongs to.
void setCombinedScores(RecordLists& lists, const std::vector<maxScores>& bounds);

}  // namespace varnolix
