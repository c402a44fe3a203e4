#include <benchmark/benchmark.h>

#include <algorithm>
#include <set>
#include <vector>

#include "against_plain_form.h"
#include "motif_source.h"
#include "plain/listed_records.h"
#include "rank/best_matches.h"
#include "rank/comparison.h"
#include "rank/record_source.h"
#include "scan/pair_records.h"

// Finding the best matches of motifs: the walk that sorts only as far as it goes, compared with a stable sort of whole
// records. Uses the records of 40 out of 2,000 motifs. The argument is the number of best matches.

namespace {

using namespace varnolix;
using Records = std::vector<dataCombinedScore>;

constexpr std::size_t motifCount = 2000;
constexpr std::size_t stride = 50;
constexpr double cutoff = 0.75;

std::uint32_t partnerOf(const dataCombinedScore& record) {
    return static_cast<std::uint32_t>(record.matrixID2);
}

std::vector<Records> recordsOfSomeMotifs() {
    const std::vector<data> motifs = bench::motifsOfCounts(bench::countMatrices(motifCount));
    // Only some motifs are listed, so keeping pairs for later motifs would not pay.
    PairRecords pairs = scannedPairs(motifs, motifs, allPlaces(motifs.size()), {overlap, maxScore, cutoff}, 1);
    pairs.isForwardScanned = pairs.isBackwardScanned = pairs.isScored = true;
    const RecordSource source = inputRecords(pairs);
    RecordScratch scratch;
    std::vector<Records> lists;
    for (std::size_t motif = 0; motif < motifCount; motif += stride) {
        source.prepareBlock(motif);
        source.listKeys(motif, scratch);
        Records& records = lists.emplace_back();
        for (const SortKey& key : scratch.keys) records.push_back(source.recordOf(scratch, key));
    }
    return lists;
}

Records plainBestMatches(Records records, std::size_t most) {
    std::stable_sort(records.begin(), records.end(), comparison);
    std::set<std::uint32_t> seen;
    Records best;
    for (const dataCombinedScore& record : records) {
        if (best.size() == most) break;
        if (seen.insert(partnerOf(record)).second) best.push_back(record);
    }
    return best;
}

bool isSame(const dataCombinedScore& left, const dataCombinedScore& right) {
    return left.matrixID1 == right.matrixID1 && left.matrixID2 == right.matrixID2 && left.position == right.position &&
           left.direction == right.direction && left.combinedScore == right.combinedScore;
}

/// An item is a record.
void bestMatches(benchmark::State& state) {
    static const std::vector<Records> lists = recordsOfSomeMotifs();
    const auto most = static_cast<std::size_t>(state.range(0));
    std::size_t records = 0;
    for (const Records& list : lists) records += list.size();
    std::vector<Records> best(lists.size());
    std::vector<Records> plainBest(lists.size());
    const RecordSource source = testing::listedInputRecords(lists);
    RecordScratch scratch;
    std::vector<std::uint32_t> seen;
    const auto select = [&] {
        for (std::size_t list = 0; list < lists.size(); ++list) {
            source.listKeys(list, scratch);
            best[list] = selectBestMatches(
                scratch.keys, inputRule(static_cast<int>(most), false), seen,
                [](const SortKey& key) { return key.partner(); },
                [&](const SortKey& key) { return lists[list][key.place().alignment]; });
        }
    };
    const auto selectPlainly = [&] {
        for (std::size_t list = 0; list < lists.size(); ++list) plainBest[list] = plainBestMatches(lists[list], most);
    };
    bench::againstPlainForm(state, static_cast<double>(records), select, selectPlainly);
    for (std::size_t list = 0; list < lists.size(); ++list) {
        if (!std::equal(best[list].begin(), best[list].end(), plainBest[list].begin(), plainBest[list].end(), isSame)) {
            state.SkipWithError("best matches differ from the plain form's");
        }
    }
}
BENCHMARK(bestMatches)->Arg(1)->Arg(10)->Arg(50)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
