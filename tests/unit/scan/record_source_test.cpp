#include "scan/record_source.h"

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

Records copyOf(std::span<const dataCombinedScore> records) {
    return Records(records.begin(), records.end());
}

class RecordSourceTest : public testing::RunTest {};

TEST_F(RecordSourceTest, HeldRecordsAreTheLists) {
    RecordLists lists(2);
    lists[1].resize(3);
    RecordScratch scratch;
    const RecordSource source = heldRecords(lists);
    EXPECT_TRUE(source(0, scratch).empty());
    EXPECT_EQ(source(1, scratch).data(), lists[1].data());
    EXPECT_EQ(source(1, scratch).size(), 3U);
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
        RecordScratch scratch;
        std::size_t records = 0;
        for (std::size_t motif = 0; motif < Datasets.size(); ++motif) {
            const Records remade = copyOf(source(motif, scratch));
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
    RecordScratch scratch;
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
        std::vector<testing::WalkedRecord> expected;
        for (const bool isForward : {true, false}) {
            for (const data& reference : references) {
                testing::walkBothRegions(isForward, motifs[motif], reference, 0.7, expected);
            }
        }
        const Records remade = copyOf(source(motif, scratch));
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
