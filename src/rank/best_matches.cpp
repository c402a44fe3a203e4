#include "rank/best_matches.h"

#include <algorithm>

namespace varnolix {

std::vector<commonBestMatches> rankBySum(const RecordLists& bestMatches) {
    std::vector<commonBestMatches> ranking;
    ranking.reserve(bestMatches.size());
    for (const std::vector<dataCombinedScore>& list : bestMatches) {
        double sum = 0.0;
        for (const dataCombinedScore& record : list) sum += record.combinedScore;
        ranking.push_back({static_cast<int>(ranking.size()) + 1, sum});
    }
    // Motifs of equal sums keep their order.
    std::stable_sort(ranking.begin(), ranking.end(), [](const commonBestMatches& left, const commonBestMatches& right) {
        return left.sumCombinedScore < right.sumCombinedScore;
    });
    return ranking;
}

std::vector<int> topMotifs(const std::vector<commonBestMatches>& ranking, const RecordLists& bestMatches, int most) {
    std::vector<int> top;
    for (const commonBestMatches& motif : ranking) {
        if (top.size() == static_cast<std::size_t>(most)) break;
        if (!bestMatches[static_cast<std::size_t>(motif.matrixID - 1)].empty()) top.push_back(motif.matrixID);
    }
    return top;
}

std::vector<int> motifsWithMatches(const RecordLists& bestMatches) {
    std::vector<int> ids;
    for (std::size_t motif = 0; motif < bestMatches.size(); ++motif) {
        if (!bestMatches[motif].empty()) ids.push_back(static_cast<int>(motif) + 1);
    }
    return ids;
}

}  // namespace varnolix
