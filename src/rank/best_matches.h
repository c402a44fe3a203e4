#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "rank/sorted_walk.h"
#include "run/shared_records.h"

// The best matches of one motif: its records by ascending combinedScore, each partner once, with its best record.

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

/// The rule against a collection: the count is tested behind the second record at the earliest.
constexpr BestMatchRule collectionRule(int mostMatches) {
    return {mostMatches, 1, false};
}

/// Scratch of one thread.
struct BestMatchScratch {
    std::vector<SortKey> keys;
    std::vector<std::uint32_t> seen;
};

/// The records that stay, in their order. Partners count as one by the number that partnerOf(record) gives them.
template <class PartnerOf>
std::vector<dataCombinedScore> selectBestMatches(std::span<const dataCombinedScore> records, const BestMatchRule& rule,
                                                 BestMatchScratch& scratch, PartnerOf partnerOf) {
    std::vector<dataCombinedScore> best;
    if (scratch.keys.empty()) return best;
    SortedWalk walk(scratch.keys);
    scratch.seen.clear();
    const auto keep = [&](const dataCombinedScore& record) {
        best.push_back(record);
        scratch.seen.push_back(partnerOf(record));
    };
    keep(records[walk.next().place]);
    int count = rule.countAtFirst;
    if (rule.testsAfterFirst && count >= rule.mostMatches) return best;
    while (!walk.atEnd()) {
        const dataCombinedScore& record = records[walk.next().place];
        if (std::find(scratch.seen.begin(), scratch.seen.end(), partnerOf(record)) == scratch.seen.end()) {
            keep(record);
            ++count;
        }
        if (count >= rule.mostMatches) break;
    }
    return best;
}

/// Puts the keys of the records that pass the filter into the scratch, in list order.
template <class Passes>
void gatherKeys(std::span<const dataCombinedScore> records, BestMatchScratch& scratch, Passes passes) {
    scratch.keys.clear();
    for (std::uint32_t place = 0; place < records.size(); ++place) {
        if (passes(records[place])) scratch.keys.push_back({records[place].combinedScore, place});
    }
}

/// One ranked motif per list, empty ones among them, by ascending sum of combinedScore.
std::vector<commonBestMatches> rankBySum(const RecordLists& bestMatches);

/// The ids of the first `most` motifs of a ranking whose lists are not empty.
std::vector<int> topMotifs(const std::vector<commonBestMatches>& ranking, const RecordLists& bestMatches, int most);

/// The ids of the motifs whose lists are not empty, ascending.
std::vector<int> motifsWithMatches(const RecordLists& bestMatches);

}  // namespace varnolix
