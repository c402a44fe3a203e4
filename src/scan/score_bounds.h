#pragma once

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
void raiseBounds(maxScores& bounds, int matrixID, double similarityScore, int overlapColumns);

/// The bounds of every motif over the records of all lists; zero entries for motifs without a record.
std::vector<maxScores> boundsOfRecords(const RecordLists& lists, BoundedMotifs bounded, std::size_t motifCount);

/// (|score - best score| + |columns - most columns|) * 0.5. The second difference counts whole columns and the first is
/// a fraction, so length decides before score.
double combinedScoreOf(double similarityScore, int overlapColumns, const maxScores& bounds);

/// Gives each record its combinedScore by the bounds of the motif that its list belongs to.
void setCombinedScores(RecordLists& lists, const std::vector<maxScores>& bounds);

}  // namespace varnolix
