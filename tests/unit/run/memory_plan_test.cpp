#include "run/memory_plan.h"

#include "support/run_fixture.h"

namespace varnolix {
namespace {

constexpr double bytesPerAlignment = 2 * sizeof(dataCombinedScore) + sizeof(ScoredShift);

class MemoryPlanTest : public testing::RunTest {
  protected:
    /// Motifs that agree in every alignment.
    static std::vector<data> equalMotifs(int count, const std::string& letters) {
        std::vector<data> motifs;
        for (int id = 1; id <= count; ++id) motifs.push_back(testing::motifOfText(id, letters));
        return motifs;
    }
};

TEST_F(MemoryPlanTest, PairsOfOneListCountOnce) {
    // Two motifs of five columns keep all 5 + 5 - 7 alignments; ten motifs make half of 10 x 10 pairs, nearly.
    EXPECT_DOUBLE_EQ(estimatedRecordBytes(equalMotifs(10, "AAAAA"), equalMotifs(10, "AAAAA"), true, 0.9),
                     50 * 3 * bytesPerAlignment);
}

TEST_F(MemoryPlanTest, PairsOfTwoListsCountAll) {
    EXPECT_DOUBLE_EQ(estimatedRecordBytes(equalMotifs(10, "AAAAA"), equalMotifs(200, "AAAAA"), false, 0.9),
                     2000 * 3 * bytesPerAlignment);
}

TEST_F(MemoryPlanTest, NothingKeptTakesNothing) {
    EXPECT_EQ(estimatedRecordBytes(equalMotifs(3, "AAAAA"), equalMotifs(3, "CCCCC"), false, 0.9), 0);
    EXPECT_EQ(estimatedRecordBytes({}, {}, true, 0.5), 0);
    EXPECT_EQ(estimatedRecordBytes(equalMotifs(1, "AAAAA"), equalMotifs(1, "AAAAA"), true, 0.5), 0);
}

TEST_F(MemoryPlanTest, MotifsOfThePlainFormCountAllTheirAlignments) {
    const std::vector<data> motifs{testing::motifOfText(1, testing::times(300, 'A')),
                                   testing::motifOfText(2, testing::times(300, 'C'))};
    EXPECT_DOUBLE_EQ(estimatedRecordBytes(motifs, motifs, true, 0.9), 2 * 593 * bytesPerAlignment);
}

TEST_F(MemoryPlanTest, SmallRunsHoldTheirRecords) {
    Datasets = equalMotifs(5, "ACGTACGT");
    DatabaseDatasets = equalMotifs(5, "ACGTACGT");
    simCutoff = 0.75;
    EXPECT_TRUE(holdsInputRecords());
    EXPECT_TRUE(holdsCollectionRecords());
}

}  // namespace
}  // namespace varnolix
