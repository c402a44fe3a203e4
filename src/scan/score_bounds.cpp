#include "scan/score_bounds.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace varnolix {

namespace {

void raiseBounds(maxScores& bounds, const maxScores& other) {
    if (other.matrixID != 0) raiseBounds(bounds, other.matrixID, other.maxScore, other.maxOverlap);
}

}  // namespace

void raiseBounds(maxScores& bounds, int matrixID, double similarityScore, int overlapColumns) {
    bounds.matrixID = matrixID;
    bounds.maxScore = std::max(bounds.maxScore, similarityScore);
    bounds.maxOverlap = std::max(bounds.maxOverlap, overlapColumns);
    bounds.halfOverlapPlus2 = (bounds.maxOverlap + 4) / 2;
}

std::vector<maxScores> boundsOfRecords(const RecordLists& lists, BoundedMotifs bounded, std::size_t motifCount) {
    std::vector<maxScores> bounds(motifCount);
#pragma omp parallel
    {
        // Maxima do not depend on the order of the records, so each thread raises bounds of its own first.
        std::vector<maxScores> own(motifCount);
        const auto raise = [&own](int matrixID, const dataCombinedScore& record) {
            raiseBounds(own[static_cast<std::size_t>(matrixID - 1)], matrixID, record.similarityScore,
                        static_cast<int>(record.overlap));
        };
#pragma omp for schedule(dynamic, 16) nowait
        for (std::size_t list = 0; list < lists.size(); ++list) {
            for (const dataCombinedScore& record : lists[list]) {
                if (bounded == BoundedMotifs::both) {
                    raise(record.matrixID1, record);
                    raise(record.matrixID2, record);
                } else {
                    raise(static_cast<int>(list) + 1, record);
                }
            }
        }
#pragma omp critical
        for (std::size_t motif = 0; motif < motifCount; ++motif) raiseBounds(bounds[motif], own[motif]);
    }
    return bounds;
}

double combinedScoreOf(double similarityScore, int overlapColumns, const maxScores& bounds) {
    const double scoreDifference = std::fabs(similarityScore - bounds.maxScore);
    const int overlapDifference = std::abs(overlapColumns - bounds.maxOverlap);
    return (scoreDifference + overlapDifference) * 0.5;
}

void setCombinedScores(RecordLists& lists, const std::vector<maxScores>& bounds) {
#pragma omp parallel for schedule(dynamic, 16)
    for (std::size_t list = 0; list < lists.size(); ++list) {
        for (dataCombinedScore& record : lists[list]) {
            record.combinedScore =
                combinedScoreOf(record.similarityScore, static_cast<int>(record.overlap), bounds[list]);
        }
    }
}

}  // namespace varnolix
