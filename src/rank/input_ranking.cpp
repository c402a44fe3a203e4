#include "rank/input_ranking.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace varnolix {

namespace {

constexpr double noScore = std::numeric_limits<double>::infinity();

void prepareDistances(DistanceTable& table, const std::vector<data>& motifs) {
    for (const data& motif : motifs) table.labels.push_back(motif.motifName);
    table.lowestScores.assign(motifs.size() * motifs.size(), noScore);
}

/// Lowers the cells of one row to the lowest combinedScore per partner. Rows are written by one thread each; the table
/// is made symmetrical when it is written out.
void lowerDistances(DistanceTable& table, std::size_t motif, std::span<const SortKey> keys) {
    double* row = table.lowestScores.data() + motif * table.labels.size();
    for (const SortKey& key : keys) row[key.partner()] = std::min(row[key.partner()], key.score());
}

/// What a thread works with.
struct RankingScratch {
    RecordScratch records;
    std::vector<SortKey> globalKeys;
    std::vector<std::uint32_t> seen;
};

/// Ranks one motif after the other, each into its own places of the rankings.
class MotifRanker {
  public:
    MotifRanker(const RecordSource& source, const RankingSettings& settings) : source_(source), settings_(settings) {}

    void rank(InputRanking& ranking, std::size_t motif, std::span<SortKey> keys, RankingScratch& scratch) const {
        if (settings_.isDistancesAsked) lowerDistances(ranking.distances, motif, keys);
        ranking.bestMatches[motif] = selectBestMatches(
            keys, inputRule(settings_.mostMatches, motif == 0), scratch.seen,
            [](const SortKey& key) { return key.partner(); },
            [&](const SortKey& key) { return source_.recordOf(motif, scratch.records, key); });
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
        if (settings.isDistancesAsked) prepareDistances(ranking->distances, motifs);
    }
    std::vector<int> datasetNums;
    datasetNums.reserve(motifs.size());
    for (const data& motif : motifs) datasetNums.push_back(motif.datasetNum);
    const MotifRanker ranker(source, settings);
    std::vector<double> largest(motifs.size());
    forEachMotif<RankingScratch>(source, motifs.size(), [&](std::size_t motif, RankingScratch& scratch) {
        const std::span<SortKey> keys = scratch.records.keys;
        if (settings.isDistancesAsked) {
            for (const SortKey& key : keys) largest[motif] = std::max(largest[motif], key.score());
        }
        if (settings.isGlobalAsked) {
            // Before the local ranking, which changes the order of the keys.
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
