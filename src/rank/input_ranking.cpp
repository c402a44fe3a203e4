#include "rank/input_ranking.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "run/record_fields.h"

namespace varnolix {

namespace {

constexpr double noScore = std::numeric_limits<double>::infinity();

void prepareDistances(DistanceTable& table, const std::vector<data>& motifs) {
    for (const data& motif : motifs) table.labels.push_back(motif.motifName);
    table.lowestScores.assign(motifs.size() * motifs.size(), noScore);
}

/// Lowers the cells of one row to the lowest combinedScore per partner. Rows are written by one thread each; the table
/// is made symmetrical when it is written out.
void lowerDistances(DistanceTable& table, std::size_t motif, std::span<const dataCombinedScore> records,
                    std::span<const SortKey> keys) {
    double* row = table.lowestScores.data() + motif * table.labels.size();
    for (const SortKey& key : keys) {
        double& cell = row[records[key.place].matrixID2 - 1];
        cell = std::min(cell, key.key);
    }
}

void rankMotif(InputRanking& ranking, std::size_t motif, std::span<const dataCombinedScore> records,
               const RankingSettings& settings, BestMatchScratch& scratch) {
    if (settings.isDistancesAsked) lowerDistances(ranking.distances, motif, records, scratch.keys);
    ranking.bestMatches[motif] =
        selectBestMatches(records, inputRule(settings.mostMatches, motif == 0), scratch,
                          [](const dataCombinedScore& record) { return static_cast<std::uint32_t>(record.matrixID2); });
}

}  // namespace

InputRankings rankInput(const RecordSource& recordsOf, const std::vector<data>& motifs,
                        const RankingSettings& settings) {
    InputRankings rankings;
    for (InputRanking* ranking : {&rankings.local, &rankings.global}) {
        ranking->bestMatches.resize(motifs.size());
        if (settings.isDistancesAsked) prepareDistances(ranking->distances, motifs);
    }
    double largest = 0.0;
#pragma omp parallel reduction(max : largest)
    {
        BestMatchScratch scratch;
        RecordScratch recordScratch;
#pragma omp for schedule(dynamic)
        for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
            const std::span<const dataCombinedScore> records = recordsOf(motif, recordScratch);
            gatherKeys(records, scratch, [](const dataCombinedScore&) { return true; });
            if (settings.isDistancesAsked) {
                for (const SortKey& key : scratch.keys) largest = std::max(largest, key.key);
            }
            rankMotif(rankings.local, motif, records, settings, scratch);
            if (!settings.isGlobalAsked) continue;
            const int datasetNum = motifs[motif].datasetNum;
            gatherKeys(records, scratch, [&](const dataCombinedScore& record) {
                return motifOf(motifs, record.matrixID2).datasetNum != datasetNum;
            });
            rankMotif(rankings.global, motif, records, settings, scratch);
        }
    }
    rankings.largestCombinedScore = largest;
    rankings.local.ranking = rankBySum(rankings.local.bestMatches);
    if (settings.isGlobalAsked) rankings.global.ranking = rankBySum(rankings.global.bestMatches);
    return rankings;
}

}  // namespace varnolix
