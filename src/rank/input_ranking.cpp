#include "rank/input_ranking.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <limits>

namespace varnolix {

namespace {

constexpr double noScore = std::numeric_limits<double>::infinity();

void prepareDistances(DistanceTable& table, const std::vector<data>& motifs) {
    for (const data& motif : motifs) table.labels.push_back(motif.motifName);
    table.lowestScores.assign(pairsOf(motifs.size()), noScore);
}

/// Lowers the cells of the motif's pairs to the lowest combinedScore. The threads of the two motifs of a pair may be at
/// its cell at the same time; the minimum does not depend on their order.
void lowerDistances(DistanceTable& table, std::size_t motif, std::span<const SortKey> keys) {
    for (const SortKey& key : keys) {
        const std::atomic_ref<double> lowest(table.lowestScores[pairCell(motif, key.partner())]);
        double known = lowest.load(std::memory_order_relaxed);
        while (key.score() < known && !lowest.compare_exchange_weak(known, key.score(), std::memory_order_relaxed)) {
        }
    }
}

/// The buffers of one thread.
struct RankingScratch {
    RecordScratch records;
    std::vector<SortKey> globalKeys;
    std::vector<std::uint32_t> seen;
};

/// Ranks motifs, each into its own places in the rankings, so several threads may do it at once.
class MotifRanker {
  public:
    MotifRanker(const RecordSource& source, const RankingSettings& settings) : source_(source), settings_(settings) {}

    void rank(InputRanking& ranking, std::size_t motif, std::span<SortKey> keys, RankingScratch& scratch) const {
        if (!ranking.distances.labels.empty()) lowerDistances(ranking.distances, motif, keys);
        ranking.bestMatches[motif] = selectBestMatches(
            keys, inputRule(settings_.mostMatches, motif == 0), scratch.seen,
            [](const SortKey& key) { return key.partner(); },
            [&](const SortKey& key) { return source_.recordOf(scratch.records, key); });
    }

  private:
    const RecordSource& source_;
    const RankingSettings& settings_;
};

}  // namespace

InputRankings rankInput(const RecordSource& source, const std::vector<data>& motifs, const RankingSettings& settings) {
    InputRankings rankings;
    for (InputRanking* ranking : {&rankings.local, &rankings.global}) {
        ranking->bestMatches.resize(motifs.size());
    }
    if (settings.isLocalTreeAsked) prepareDistances(rankings.local.distances, motifs);
    if (settings.isGlobalTreeAsked) prepareDistances(rankings.global.distances, motifs);
    const bool isTreeAsked = settings.isLocalTreeAsked || settings.isGlobalTreeAsked;
    std::vector<int> datasetNums;
    datasetNums.reserve(motifs.size());
    for (const data& motif : motifs) datasetNums.push_back(motif.datasetNum);
    const MotifRanker ranker(source, settings);
    std::vector<double> largest(motifs.size());
    forEachMotif<RankingScratch>(source, motifs.size(), [&](RankingScratch& scratch) {
        const std::size_t motif = scratch.records.motif;
        const std::span<SortKey> keys = scratch.records.keys;
        if (isTreeAsked) {
            for (const SortKey& key : keys) largest[motif] = std::max(largest[motif], key.score());
        }
        if (settings.isGlobalAsked) {
            // This comes before the local ranking, which changes the order of the keys.
            scratch.globalKeys.clear();
            std::copy_if(keys.begin(), keys.end(), std::back_inserter(scratch.globalKeys),
                         [&](const SortKey& key) { return datasetNums[key.partner()] != datasetNums[motif]; });
            ranker.rank(rankings.global, motif, scratch.globalKeys, scratch);
        }
        ranker.rank(rankings.local, motif, keys, scratch);
    });
    for (const double ofMotif : largest) {
        rankings.largestCombinedScore = std::max(rankings.largestCombinedScore, ofMotif);
    }
    rankings.local.ranking = rankBySum(rankings.local.bestMatches);
    if (settings.isGlobalAsked) rankings.global.ranking = rankBySum(rankings.global.bestMatches);
    return rankings;
}

}  // namespace varnolix
