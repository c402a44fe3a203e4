#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "rank/sorted_walk.h"
#include "run/shared_records.h"

// The best matches of a motif: its records by ascending combinedScore, but of each partner only the best record.

namespace varnolix {

/// How the walk over a motif's sorted records counts. The first record is always kept.
struct BestMatchRule {
    int mostMatches;       ///< the walk stops once the count is at least this
    int countAtFirst;      ///< what the first record counts
    bool testsAfterFirst;  ///< whether the count is tested before the second record is looked at
};

/// The rule between input motifs. The first record of the very first motif does not count, so that motif keeps one
/// more.
constexpr BestMatchRule inputRule(int mostMatches, bool isFirstMotif) {
    return {mostMatches, isFirstMotif ? 0 : 1, true};
}

/// The rule against a collection: the count is tested after the second record at the earliest.
constexpr BestMatchRule collectionRule(int mostMatches) {
    return {mostMatches, 1, false};
}

/// The records that are kept, in their order. The keys are left partly sorted. Records with the same partnerOf(key)
/// count as records of one partner.
/// @param seen a buffer, to be reused
template <class PartnerOf, class RecordOf>
std::vector<dataCombinedScore> selectBestMatches(std::span<SortKey> keys, const BestMatchRule& rule,
                                                 std::vector<std::uint32_t>& seen, PartnerOf partnerOf,
                                                 RecordOf recordOf) {
    std::vector<dataCombinedScore> best;
    if (keys.empty()) return best;
    SortedWalk walk(keys);
    seen.clear();
    const auto keep = [&](const SortKey& key) {
        best.push_back(recordOf(key));
        seen.push_back(partnerOf(key));
    };
    keep(walk.next());
    int count = rule.countAtFirst;
    if (rule.testsAfterFirst && count >= rule.mostMatches) return best;
    while (!walk.atEnd()) {
        const SortKey& key = walk.next();
        if (std::find(seen.begin(), seen.end(), partnerOf(key)) == seen.end()) {
            keep(key);
            ++count;
        }
        if (count >= rule.mostMatches) break;
    }
    return best;
}

/// One ranked motif for each list, even if it is empty, by ascending sum of combinedScore.
std::vector<commonBestMatches> rankBySum(const RecordLists& bestMatches);

/// The ids of the first `most` motifs of a ranking whose lists are not empty.
std::vector<int> topMotifs(const std::vector<commonBestMatches>& ranking, const RecordLists& bestMatches, int most);

/// The ids of the motifs whose lists are not empty, ascending.
std::vector<int> motifsWithMatches(const RecordLists& bestMatches);

}  // namespace varnolix
