#include <benchmark/benchmark.h>
#include <omp.h>

#include <cmath>
#include <map>
#include <vector>

#include "against_plain_form.h"
#include "motif_source.h"
#include "scan/pair_scan.h"
#include "scan/score_bounds.h"

// Bounds and sort keys for the records of 1,000 motifs. The argument is the number of threads. The plain form uses one
// thread, and looks up the bounds of a motif in a map.

namespace {

using namespace varnolix;

constexpr std::size_t motifCount = 1000;
constexpr double cutoff = 0.75;

RecordLists recordsOf(const std::vector<data>& motifs) {
    const ShiftRows rows = scanAllPairs(motifs, cutoff);
    RecordLists lists;
    reserveRecordsOfPairs(rows, motifs, lists);
    for (const Direction direction : {Direction::forward, Direction::backward}) {
        appendRecordsOfPairs(direction, rows, motifs, lists);
    }
    return lists;
}

void plainCombinedScores(RecordLists& lists) {
    std::map<int, maxScores> bounds;
    for (const std::vector<dataCombinedScore>& list : lists) {
        for (const dataCombinedScore& record : list) {
            for (const int id : {record.matrixID1, record.matrixID2}) {
                maxScores& own = bounds[id];
                own.maxScore = std::max(own.maxScore, record.similarityScore);
                own.maxOverlap = std::max(own.maxOverlap, static_cast<int>(record.overlap));
            }
        }
    }
    for (std::vector<dataCombinedScore>& list : lists) {
        for (dataCombinedScore& record : list) {
            const maxScores& own = bounds[record.matrixID1];
            record.combinedScore = (std::fabs(record.similarityScore - own.maxScore) +
                                    std::abs(static_cast<int>(record.overlap) - own.maxOverlap)) *
                                   0.5;
        }
    }
}

bool isSame(const RecordLists& left, const RecordLists& right) {
    for (std::size_t list = 0; list < left.size(); ++list) {
        for (std::size_t place = 0; place < left[list].size(); ++place) {
            if (left[list][place].combinedScore != right[list][place].combinedScore) return false;
        }
    }
    return true;
}

/// An item is a record.
void boundsAndKeys(benchmark::State& state) {
    static const std::vector<data> motifs = bench::motifsOfCounts(bench::countMatrices(motifCount));
    static RecordLists lists = recordsOf(motifs);
    static RecordLists plainLists = lists;
    std::size_t records = 0;
    for (const auto& list : lists) records += list.size();
    omp_set_num_threads(static_cast<int>(state.range(0)));
    bench::againstPlainForm(
        state, static_cast<double>(records),
        [] { setCombinedScores(lists, boundsOfRecords(lists, BoundedMotifs::both, lists.size())); },
        [] { plainCombinedScores(plainLists); });
    if (!isSame(lists, plainLists)) state.SkipWithError("keys differ from the plain form's");
}
BENCHMARK(boundsAndKeys)->Arg(1)->Arg(2)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
