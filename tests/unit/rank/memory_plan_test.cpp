#include "rank/memory_plan.h"

#include "support/run_fixture.h"

namespace varnolix {
namespace {

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
    EXPECT_DOUBLE_EQ(estimatedAlignments(equalMotifs(10, "AAAAA"), equalMotifs(10, "AAAAA"), true, {4, 1.0, 0.9}),
                     50 * 3);
}

TEST_F(MemoryPlanTest, PairsOfTwoListsCountAll) {
    EXPECT_DOUBLE_EQ(estimatedAlignments(equalMotifs(10, "AAAAA"), equalMotifs(200, "AAAAA"), false, {4, 1.0, 0.9}),
                     2000 * 3);
}

TEST_F(MemoryPlanTest, NothingKeptTakesNothing) {
    EXPECT_EQ(estimatedAlignments(equalMotifs(3, "AAAAA"), equalMotifs(3, "CCCCC"), false, {4, 1.0, 0.9}), 0);
    EXPECT_EQ(estimatedAlignments({}, {}, true, {4, 1.0, 0.5}), 0);
    EXPECT_EQ(estimatedAlignments(equalMotifs(1, "AAAAA"), equalMotifs(1, "AAAAA"), true, {4, 1.0, 0.5}), 0);
}

TEST_F(MemoryPlanTest, MotifsOfThePlainFormCountAllTheirAlignments) {
    const std::vector<data> motifs{testing::motifOfText(1, testing::times(300, 'A')),
                                   testing::motifOfText(2, testing::times(300, 'C'))};
    EXPECT_DOUBLE_EQ(estimatedAlignments(motifs, motifs, true, {4, 1.0, 0.9}), 2 * 593);
}

TEST_F(MemoryPlanTest, AlignmentsThatFitMakeOneBlock) {
    EXPECT_EQ(motifsPerBlock(100, 1000, 16000), 100U);
    EXPECT_EQ(motifsPerBlock(100, 0, 0), 100U);
}

TEST_F(MemoryPlanTest, BlocksAreEvenAndFit) {
    // Half of the motifs make a quarter of the pairs.
    EXPECT_EQ(motifsPerBlock(100, 1000, 4000), 50U);
    EXPECT_EQ(motifsPerBlock(101, 1000, 4000), 51U);
    EXPECT_EQ(motifsPerBlock(100, 1000, 3999), 34U);
    for (const double bytes : {1e3, 1e4, 1e5, 1e6, 1e7}) {
        const auto perBlock = static_cast<double>(motifsPerBlock(1000, 1e6, bytes));
        EXPECT_LE(1e6 * sizeof(ScoredShift) * (perBlock / 1000) * (perBlock / 1000), bytes * 1.05) << bytes;
    }
}

TEST_F(MemoryPlanTest, ABlockHasAMotif) {
    EXPECT_EQ(motifsPerBlock(10, 1e9, 1), 1U);
    EXPECT_EQ(motifsPerBlock(0, 0, 1), 1U);
}

TEST_F(MemoryPlanTest, TablesOfTreesAreNeeded) {
    Datasets = equalMotifs(1000, "ACG");
    const double copies = surelyNeededBytes();
    EXPECT_LT(copies, 1e6);
    constexpr double table = 8 * 1000 * 999 / 2;
    motifCluster = "Y";
    outputFileType = "Global-Only";
    numFile = 1;
    EXPECT_EQ(surelyNeededBytes(), copies);
    outputFileType = "All";
    EXPECT_EQ(surelyNeededBytes(), copies + table);
    numFile = 2;
    EXPECT_EQ(surelyNeededBytes(), copies + 2 * table);
    motifCluster = "N";
    EXPECT_EQ(surelyNeededBytes(), copies);
}

TEST_F(MemoryPlanTest, WhatDoesNotFitEndsTheRun) {
    requireRoom(1000);
    EXPECT_EXIT(
        requireRoom(1e18), ::testing::ExitedWithCode(1),
        "^Error: this job needs 1000000000000 MB of memory beside its motifs, and there are only [0-9]+ MB\\.\n$");
}

TEST_F(MemoryPlanTest, AgainstACollectionAlignmentsGrowWithTheMotifs) {
    EXPECT_EQ(motifsPerBlockAgainst(100, 1000, 16000), 100U);
    EXPECT_EQ(motifsPerBlockAgainst(100, 1000, 4000), 25U);
    EXPECT_EQ(motifsPerBlockAgainst(100, 1000, 1), 1U);
    EXPECT_EQ(motifsPerBlockAgainst(0, 0, 1), 1U);
}

TEST_F(MemoryPlanTest, SmallRunsAreOneBlock) {
    Datasets = equalMotifs(5, "ACGTACGT");
    DatabaseDatasets = equalMotifs(7, "ACGTACGT");
    simCutoff = 0.75;
    planInputScan();
    EXPECT_EQ(heldMotifs, 5U);
    heldMotifs = 0;
    planCollectionScan();
    EXPECT_EQ(heldMotifs, 5U);
}

}  // namespace
}  // namespace varnolix
