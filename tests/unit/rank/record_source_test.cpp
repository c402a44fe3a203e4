#include "rank/record_source.h"

#include <omp.h>

#include <optional>

#include "scan/plain_walk.h"
#include "scan/score_bounds.h"
#include "scan/stages.h"
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

/// What forEachMotif gives each thread.
struct Scratch {
    RecordScratch records;
};

/// All records of each motif, in the order of their keys.
RecordLists recordsOf(const RecordSource& source, std::size_t motifs) {
    RecordLists lists(motifs);
    forEachMotif<Scratch>(source, motifs, [&](std::size_t motif, Scratch& scratch) {
        std::optional<SortKey> earlier;
        for (const SortKey& key : scratch.records.keys) {
            // Equal scores are settled by place, so the places have to grow in the order of the list.
            const SortKey place(0, key.place());
            EXPECT_TRUE(!earlier || *earlier < place) << motif;
            earlier = place;
            lists[motif].push_back(source.recordOf(motif, scratch.records, key));
            EXPECT_EQ(lists[motif].back().combinedScore, key.score());
        }
    });
    return lists;
}

void expectSame(const RecordLists& records, const RecordLists& expected) {
    ASSERT_EQ(records.size(), expected.size());
    for (std::size_t motif = 0; motif < records.size(); ++motif) {
        ASSERT_EQ(testing::walked(records[motif]), testing::walked(expected[motif])) << motif;
        ASSERT_EQ(combinedScores(records[motif]), combinedScores(expected[motif])) << motif;
    }
}

class RecordSourceTest : public testing::RunTest {};

TEST_F(RecordSourceTest, HeldRecordsAreThoseOfTheLists) {
    RecordLists lists(2);
    for (const int partner : {3, 5}) {
        dataCombinedScore record{};
        record.matrixID1 = 2;
        record.matrixID2 = partner;
        record.combinedScore = partner * 0.25;
        lists[1].push_back(record);
    }
    const RecordSource source = heldInputRecords(lists);
    const RecordLists records = recordsOf(source, 2);
    EXPECT_TRUE(records[0].empty());
    EXPECT_EQ(combinedScores(records[1]), (std::vector{0.75, 1.25}));
    RecordScratch scratch;
    source.listKeys(1, scratch);
    EXPECT_EQ(scratch.keys[0].partner(), 2U);
    EXPECT_EQ(scratch.keys[1].partner(), 4U);
}

TEST_F(RecordSourceTest, PartnerAgainstACollectionIsTheReferenceMotif) {
    RecordLists lists(1);
    for (const bool isInputFirst : {true, false}) {
        dataCombinedScore record{};
        record.matrixID1 = isInputFirst ? 1 : 7;
        record.matrixID2 = isInputFirst ? 7 : 1;
        record.primaryFlag = isInputFirst ? PrimaryFlag::yes : PrimaryFlag::empty;
        lists[0].push_back(record);
    }
    RecordScratch scratch;
    heldCollectionRecords(lists).listKeys(0, scratch);
    EXPECT_EQ(scratch.keys[0].partner(), 6U);
    EXPECT_EQ(scratch.keys[1].partner(), 6U);
}

TEST_F(RecordSourceTest, RemadeRecordsAreThoseOfTheScans) {
    for (std::uint64_t seed = 31; seed <= 34; ++seed) {
        SCOPED_TRACE(seed);
        testing::resetGlobals();
        Datasets = testing::RandomMotifs(seed).motifs(22, 2);
        // One motif whose values the fast way does not take.
        Datasets[5] =
            testing::motifOfMatrix(6, {{2, -1, 0, 0}, {1, 0, 0, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}});
        simCutoff = 0.6;
        forwardScan();
        backwardScan();
        getMaxScores();
        calculateSumScoresCompare();
        std::size_t records = 0;
        for (const Records& list : DatasetsCombinedScoreLists) records += list.size();
        EXPECT_GT(records, 100U);
        for (const std::size_t blockSize : {1U, 3U, 11U, 21U, 22U, 1000U}) {
            SCOPED_TRACE(blockSize);
            expectSame(recordsOf(remadeInputRecords(Datasets, simCutoff, blockSize), Datasets.size()),
                       DatasetsCombinedScoreLists);
        }
    }
}

TEST_F(RecordSourceTest, MotifsMayBeTakenInAnyOrder) {
    // Several runs of neighbours, whose earlier alignments are gathered together; many threads would make them short.
    omp_set_num_threads(1);
    Datasets = testing::RandomMotifs(35).motifs(70, 2);
    const RecordSource source = remadeInputRecords(Datasets, 0.8, Datasets.size());
    const RecordLists expected = recordsOf(source, Datasets.size());
    ASSERT_GT(source.runSize, 1U);
    ASSERT_LT(source.runSize, 34U);
    RecordScratch scratch;
    for (const std::size_t motif : {69U, 0U, 68U, 35U, 1U, 36U, 0U}) {
        source.listKeys(motif, scratch);
        Records records;
        for (const SortKey& key : scratch.keys) records.push_back(source.recordOf(motif, scratch, key));
        EXPECT_EQ(testing::walked(records), testing::walked(expected[motif])) << motif;
    }
}

TEST_F(RecordSourceTest, ThreadsChangeNothing) {
    Datasets = testing::RandomMotifs(36).motifs(70, 2);
    omp_set_num_threads(1);
    const RecordLists expected = recordsOf(remadeInputRecords(Datasets, 0.8, 30), Datasets.size());
    for (const int threads : {2, 3, 7}) {
        SCOPED_TRACE(threads);
        omp_set_num_threads(threads);
        expectSame(recordsOf(remadeInputRecords(Datasets, 0.8, 30), Datasets.size()), expected);
    }
}

TEST_F(RecordSourceTest, RemadeRecordsAgainstACollectionAreThoseOfTheWalk) {
    testing::RandomMotifs random(8);
    const std::vector<data> motifs = random.motifs(12, 1);
    const std::vector<data> references = random.motifs(15, 1);
    const RecordLists records = recordsOf(remadeCollectionRecords(motifs, references, 0.7), motifs.size());
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
        std::vector<testing::WalkedRecord> expected;
        for (const bool isForward : {true, false}) {
            for (const data& reference : references) {
                testing::walkBothRegions(isForward, motifs[motif], reference, 0.7, expected);
            }
        }
        const Records& remade = records[motif];
        ASSERT_EQ(testing::walked(remade), expected);
        // Only the input motif's own bounds count.
        double bestScore = 0;
        int mostColumns = 0;
        for (const testing::WalkedRecord& record : expected) {
            bestScore = std::max(bestScore, record.similarityScore);
            mostColumns = std::max(mostColumns, record.overlapColumns);
        }
        for (std::size_t place = 0; place < expected.size(); ++place) {
            EXPECT_EQ(remade[place].combinedScore, (std::fabs(expected[place].similarityScore - bestScore) +
                                                    (mostColumns - expected[place].overlapColumns)) *
                                                       0.5);
        }
    }
}

}  // namespace
}  // namespace varnolix
