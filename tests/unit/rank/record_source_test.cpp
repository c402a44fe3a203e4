#include "rank/record_source.h"

#include "scan/backwardScan.h"
#include "scan/calculateSumScoresCompare.h"
#include "scan/forwardScan.h"
#include "scan/getMaxScores.h"
#include "scan/plain_walk.h"
#include "scan/score_bounds.h"
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

/// All records of a motif, in the order of their keys.
Records recordsOf(const RecordSource& source, std::size_t motif) {
    RecordScratch scratch;
    source.listKeys(motif, scratch);
    Records records;
    for (const SortKey& key : scratch.keys) {
        records.push_back(source.recordOf(motif, scratch, key));
        EXPECT_EQ(records.back().combinedScore, key.key);
    }
    return records;
}

class RecordSourceTest : public testing::RunTest {};

TEST_F(RecordSourceTest, HeldRecordsAreThoseOfTheLists) {
    RecordLists lists(2);
    for (const int partner : {5, 3}) {
        dataCombinedScore record{};
        record.matrixID1 = 2;
        record.matrixID2 = partner;
        record.combinedScore = partner * 0.25;
        lists[1].push_back(record);
    }
    const RecordSource source = heldInputRecords(lists);
    EXPECT_TRUE(recordsOf(source, 0).empty());
    EXPECT_EQ(combinedScores(recordsOf(source, 1)), (std::vector{1.25, 0.75}));
    RecordScratch scratch;
    source.listKeys(1, scratch);
    EXPECT_EQ(scratch.keys[0].partner, 4U);
    EXPECT_EQ(scratch.keys[1].partner, 2U);
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
    EXPECT_EQ(scratch.keys[0].partner, 6U);
    EXPECT_EQ(scratch.keys[1].partner, 6U);
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
        const RecordSource source = remadeInputRecords(Datasets, simCutoff);
        std::size_t records = 0;
        for (std::size_t motif = 0; motif < Datasets.size(); ++motif) {
            const Records remade = recordsOf(source, motif);
            records += remade.size();
            ASSERT_EQ(testing::walked(remade), testing::walked(DatasetsCombinedScoreLists[motif])) << motif;
            ASSERT_EQ(combinedScores(remade), combinedScores(DatasetsCombinedScoreLists[motif])) << motif;
        }
        EXPECT_GT(records, 100U);
    }
}

TEST_F(RecordSourceTest, RemadeRecordsAgainstACollectionAreThoseOfTheWalk) {
    testing::RandomMotifs random(8);
    const std::vector<data> motifs = random.motifs(12, 1);
    const std::vector<data> references = random.motifs(15, 1);
    const RecordSource source = remadeCollectionRecords(motifs, references, 0.7);
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
        std::vector<testing::WalkedRecord> expected;
        for (const bool isForward : {true, false}) {
            for (const data& reference : references) {
                testing::walkBothRegions(isForward, motifs[motif], reference, 0.7, expected);
            }
        }
        const Records remade = recordsOf(source, motif);
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
