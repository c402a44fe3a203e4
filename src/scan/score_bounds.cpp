#include "scan/score_bounds.h"

namespace varnolix {

namespace {

void raiseBounds(maxScores& bounds, const maxScores& other) {
    if (other.matrixID != 0) raiseBounds(bounds, other.matrixID, other.maxScore, other.maxOverlap);
}

}  // namespace

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
