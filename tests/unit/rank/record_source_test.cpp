#include "rank/record_source.h"

#include <omp.h>

#include <cmath>
#include <cstdlib>

#include "plain/listed_records.h"
#include "plain/plain_records.h"
#include "scan/pair_records.h"
#include "support/random_motifs.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using Records = std::vector<dataCombinedScore>;

std::vector<double> combinedScores(std::span<const dataCombinedScore> records) {
    std::vector<double> scores;
    for (const dataCombinedScore& record : records) scores.push_back(record.combinedScore);
    return scores;
}

/// All records of each motif, in the order of their keys.
RecordLists recordsOf(const RecordSource& source, std::size_t motifs) {
    return testing::allRecords(source, motifs);
}

/// The scanned and scored records of the motifs among themselves.
PairRecords inputPairs(std::span<const data> motifs, double cutoff, std::size_t blockSize) {
    PairRecords records = scannedPairs(motifs, motifs, allPlaces(motifs.size()), {4, 1.0, cutoff}, blockSize);
    records.isForwardScanned = records.isBackwardScanned = records.isScored = true;
    return records;
}

void expectSame(const RecordLists& records, const RecordLists& expected) {
    ASSERT_EQ(records.size(), expected.size());
    for (std::size_t motif = 0; motif < records.size(); ++motif) {
        ASSERT_EQ(testing::walked(records[motif]), testing::walked(expected[motif])) << motif;
        ASSERT_EQ(combinedScores(records[motif]), combinedScores(expected[motif])) << motif;
    }
}

class RecordSourceTest : public testing::RunTest {};

/// What the scans list, by the plain walk, with bounds and sort keys by their definition.
RecordLists plainRecords(const std::vector<data>& motifs, double cutoff) {
    const auto walkedLists = testing::walkBothScans(motifs, cutoff);
    std::vector<double> bestScores(motifs.size());
    std::vector<int> mostColumns(motifs.size());
    for (const auto& list : walkedLists) {
        for (const testing::WalkedRecord& record : list) {
            // Both motifs of a record raise their bounds.
            for (const int id : {record.matrixID1, record.matrixID2}) {
                const auto motif = static_cast<std::size_t>(id - 1);
                bestScores[motif] = std::max(bestScores[motif], record.similarityScore);
                mostColumns[motif] = std::max(mostColumns[motif], record.overlapColumns);
            }
        }
    }
    RecordLists lists(motifs.size());
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
        for (const testing::WalkedRecord& record : walkedLists[motif]) {
            dataCombinedScore& made = lists[motif].emplace_back();
            made.combinedScore = (std::fabs(record.similarityScore - bestScores[motif]) +
                                  std::abs(record.overlapColumns - mostColumns[motif])) *
                                 0.5;
        }
    }
    return lists;
}

TEST_F(RecordSourceTest, RecordsAreThoseOfThePlainWalk) {
    for (std::uint64_t seed = 31; seed <= 34; ++seed) {
        SCOPED_TRACE(seed);
        std::vector<data> motifs = testing::RandomMotifs(seed).motifs(22, 2);
        // One motif whose values the fast way does not take.
        motifs[5] = testing::motifOfMatrix(6, {{2, -1, 0, 0}, {1, 0, 0, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}});
        const auto expected = testing::walkBothScans(motifs, 0.6);
        const RecordLists scored = plainRecords(motifs, 0.6);
        std::size_t count = 0;
        for (const auto& list : expected) count += list.size();
        EXPECT_GT(count, 100U);
        for (const std::size_t blockSize : {1U, 3U, 11U, 21U, 22U, 1000U}) {
            SCOPED_TRACE(blockSize);
            PairRecords pairs = inputPairs(motifs, 0.6, blockSize);
            const RecordLists records = recordsOf(inputRecords(pairs), motifs.size());
            for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
                ASSERT_EQ(testing::walked(records[motif]), expected[motif]) << motif;
                ASSERT_EQ(combinedScores(records[motif]), combinedScores(scored[motif])) << motif;
            }
        }
    }
}

TEST_F(RecordSourceTest, PlacesOfKeysGrowInTheOrderOfTheList) {
    // Equal scores are settled by place.
    const std::vector<data> motifs = testing::RandomMotifs(37).motifs(12, 1);
    PairRecords pairs = inputPairs(motifs, 0.6, 5);
    const RecordSource source = inputRecords(pairs);
    forEachMotif<testing::ListingScratch>(source, motifs.size(), [&](testing::ListingScratch& scratch) {
        const std::span<SortKey> keys = scratch.records.keys;
        for (std::size_t k = 1; k < keys.size(); ++k) {
            EXPECT_TRUE(SortKey(0, keys[k - 1].place()) < SortKey(0, keys[k].place()));
        }
    });
}

TEST_F(RecordSourceTest, BlocksKeepTheBoundsOfTheirMotifs) {
    const std::vector<data> motifs = testing::RandomMotifs(38).motifs(20, 1);
    std::vector<maxScores> whole;
    for (const std::size_t blockSize : {20U, 7U}) {
        PairRecords pairs = inputPairs(motifs, 0.6, blockSize);
        std::vector<maxScores> bounds;
        attachBounds(pairs, bounds);
        recordsOf(inputRecords(pairs), motifs.size());
        if (whole.empty()) whole = bounds;
        for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
            EXPECT_EQ(bounds[motif].maxScore, whole[motif].maxScore);
            EXPECT_EQ(bounds[motif].maxOverlap, whole[motif].maxOverlap);
        }
    }
}

TEST_F(RecordSourceTest, MotifsMayBeTakenInAnyOrder) {
    // Several runs of neighbours, whose earlier alignments are gathered together; many threads would make them short.
    omp_set_num_threads(1);
    Datasets = testing::RandomMotifs(35).motifs(70, 2);
    PairRecords pairs = inputPairs(Datasets, 0.8, 0);
    const RecordSource source = inputRecords(pairs);
    const RecordLists expected = recordsOf(source, Datasets.size());
    ASSERT_GT(source.runSize, 1U);
    ASSERT_LT(source.runSize, 34U);
    RecordScratch scratch;
    for (const std::size_t motif : {69U, 0U, 68U, 35U, 1U, 36U, 0U}) {
        source.listKeys(motif, scratch);
        Records records;
        for (const SortKey& key : scratch.keys) records.push_back(source.recordOf(scratch, key));
        EXPECT_EQ(testing::walked(records), testing::walked(expected[motif])) << motif;
    }
}

TEST_F(RecordSourceTest, ThreadsChangeNothing) {
    Datasets = testing::RandomMotifs(36).motifs(70, 2);
    omp_set_num_threads(1);
    PairRecords pairs = inputPairs(Datasets, 0.8, 30);
    const RecordLists expected = recordsOf(inputRecords(pairs), Datasets.size());
    for (const int threads : {2, 3, 7}) {
        SCOPED_TRACE(threads);
        omp_set_num_threads(threads);
        PairRecords again = inputPairs(Datasets, 0.8, 30);
        expectSame(recordsOf(inputRecords(again), Datasets.size()), expected);
    }
}

TEST_F(RecordSourceTest, RecordsAgainstACollectionAreThoseOfTheWalk) {
    testing::RandomMotifs random(8);
    const std::vector<data> motifs = random.motifs(12, 1);
    const std::vector<data> references = random.motifs(15, 1);
    PairRecords pairs = scannedPairs(motifs, references, allPlaces(motifs.size()), {4, 1.0, 0.7}, 5);
    pairs.isForwardScanned = pairs.isBackwardScanned = pairs.isScored = true;
    const RecordLists records = recordsOf(collectionRecords(pairs), motifs.size());
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
        std::vector<testing::WalkedRecord> expected;
        for (const bool isForward : {true, false}) {
            for (const data& reference : references) {
                testing::walkBothRegions(isForward, motifs[motif], reference, 0.7, expected);
            }
        }
        const Records& made = records[motif];
        ASSERT_EQ(testing::walked(made), expected);
        // Only the input motif's own bounds count.
        double bestScore = 0;
        int mostColumns = 0;
        for (const testing::WalkedRecord& record : expected) {
            bestScore = std::max(bestScore, record.similarityScore);
            mostColumns = std::max(mostColumns, record.overlapColumns);
        }
        for (std::size_t place = 0; place < expected.size(); ++place) {
            EXPECT_EQ(made[place].combinedScore, (std::fabs(expected[place].similarityScore - bestScore) +
                                                  (mostColumns - expected[place].overlapColumns)) *
                                                     0.5);
        }
    }
}

}  // namespace
}  // namespace varnolix
