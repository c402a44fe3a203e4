#include "scan/score_bounds.h"

#include <omp.h>

#include "scan/stages.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

dataCombinedScore record(int first, int second, double score, unsigned columns, PrimaryFlag flag = PrimaryFlag::yes) {
    dataCombinedScore made{};
    made.matrixID1 = first;
    made.matrixID2 = second;
    made.similarityScore = score;
    made.overlap = columns & 0xFFFFU;
    made.primaryFlag = flag;
    return made;
}

void expectBounds(const maxScores& bounds, int matrixID, double score, int columns, int half) {
    EXPECT_EQ(bounds.matrixID, matrixID);
    EXPECT_EQ(bounds.maxScore, score);
    EXPECT_EQ(bounds.maxOverlap, columns);
    EXPECT_EQ(bounds.halfOverlapPlus2, half);
}

TEST(RaiseBounds, ScoreAndOverlapRiseApart) {
    maxScores bounds;
    raiseBounds(bounds, 3, 0.8, 9);
    expectBounds(bounds, 3, 0.8, 9, 6);
    raiseBounds(bounds, 3, 0.9, 5);
    expectBounds(bounds, 3, 0.9, 9, 6);
    raiseBounds(bounds, 3, 0.7, 12);
    expectBounds(bounds, 3, 0.9, 12, 8);
}

TEST(RaiseBounds, HalfOverlapIsCutOff) {
    struct Case {
        int columns;
        int half;
    };
    for (const Case& each : {Case{4, 4}, {5, 4}, {8, 6}, {9, 6}, {10, 7}}) {
        maxScores bounds;
        raiseBounds(bounds, 1, 0.5, each.columns);
        EXPECT_EQ(bounds.halfOverlapPlus2, each.half);
    }
}

class ScoreBoundsTest : public testing::RunTest {
  protected:
    ScoreBoundsTest() { Datasets.resize(4); }
    ~ScoreBoundsTest() override { omp_set_num_threads(threadsBefore_); }

    int threadsBefore_ = omp_get_max_threads();
};

TEST_F(ScoreBoundsTest, BothMotifsOfARecordAreRaised) {
    DatasetsCombinedScoreLists = {{record(1, 2, 0.9, 5)}, {record(2, 3, 0.8, 7)}, {}, {}};
    getMaxScores();
    ASSERT_EQ(maxScoresList.size(), 4U);
    expectBounds(maxScoresList[0], 1, 0.9, 5, 4);
    expectBounds(maxScoresList[1], 2, 0.9, 7, 5);
    expectBounds(maxScoresList[2], 3, 0.8, 7, 5);
    expectBounds(maxScoresList[3], 0, 0.0, 0, 0);
}

TEST_F(ScoreBoundsTest, NoRecordsGiveZeroEntries) {
    DatasetsCombinedScoreLists.resize(4);
    getMaxScores();
    calculateSumScoresCompare();
    ASSERT_EQ(maxScoresList.size(), 4U);
    for (const maxScores& bounds : maxScoresList) expectBounds(bounds, 0, 0.0, 0, 0);
}

TEST_F(ScoreBoundsTest, ThreadsChangeNothing) {
    DatasetsCombinedScoreLists.resize(4);
    for (int place = 0; place < 400; ++place) {
        const int first = place % 4 + 1;
        DatasetsCombinedScoreLists[static_cast<std::size_t>(first - 1)].push_back(
            record(first, (place + 1 + place / 4 % 3) % 4 + 1, 0.5 + place % 97 * 0.005,
                   static_cast<unsigned>(4 + place % 13)));
    }
    for (const int threads : {1, 2, 3, 7}) {
        omp_set_num_threads(threads);
        getMaxScores();
        for (int motif = 1; motif <= 4; ++motif) {
            maxScores expected;
            for (const auto& list : DatasetsCombinedScoreLists) {
                for (const dataCombinedScore& each : list) {
                    if (each.matrixID1 != motif && each.matrixID2 != motif) continue;
                    expected.maxScore = std::max(expected.maxScore, each.similarityScore);
                    expected.maxOverlap = std::max(expected.maxOverlap, static_cast<int>(each.overlap));
                }
            }
            expectBounds(maxScoresList[static_cast<std::size_t>(motif - 1)], motif, expected.maxScore,
                         expected.maxOverlap, (expected.maxOverlap + 4) / 2);
        }
    }
}

TEST(CombinedScore, BestAndLongestRecordHasZero) {
    maxScores bounds;
    raiseBounds(bounds, 1, 0.9, 8);
    EXPECT_EQ(combinedScoreOf(0.9, 8, bounds), 0.0);
}

TEST(CombinedScore, HalfOfBothDifferences) {
    maxScores bounds;
    raiseBounds(bounds, 1, 1.0, 8);
    EXPECT_EQ(combinedScoreOf(0.75, 8, bounds), 0.125);
    EXPECT_EQ(combinedScoreOf(1.0, 5, bounds), 1.5);
    EXPECT_EQ(combinedScoreOf(0.5, 4, bounds), 2.25);
}

TEST(CombinedScore, OneColumnWeighsMoreThanAnyScore) {
    maxScores bounds;
    raiseBounds(bounds, 1, 1.0, 8);
    EXPECT_LT(combinedScoreOf(0.5, 8, bounds), combinedScoreOf(1.0, 7, bounds));
}

TEST_F(ScoreBoundsTest, OnlyTheFirstMotifCountsForTheScore) {
    // Motif 2 has better bounds, which do not count for the record that stores motif 1 first.
    DatasetsCombinedScoreLists = {{record(1, 2, 0.75, 5)}, {record(2, 3, 1.0, 9)}, {}, {}};
    getMaxScores();
    calculateSumScoresCompare();
    EXPECT_EQ(DatasetsCombinedScoreLists[0][0].combinedScore, 0.0);
    EXPECT_EQ(DatasetsCombinedScoreLists[1][0].combinedScore, 0.0);
}

TEST_F(ScoreBoundsTest, RecordOfTheSecondMotifRaisesTheFirst) {
    // The record 2-1 gives motif 1 a longer overlap than its own record has.
    DatasetsCombinedScoreLists = {{record(1, 2, 0.75, 5)}, {record(2, 1, 1.0, 6)}, {}, {}};
    getMaxScores();
    calculateSumScoresCompare();
    EXPECT_EQ(DatasetsCombinedScoreLists[0][0].combinedScore, (0.25 + 1) * 0.5);
}

using Stage = void (*)();

struct DatabaseTwin {
    RecordLists& lists;
    std::vector<maxScores>& bounds;
    Stage getBounds;
    Stage setScores;
};

TEST_F(ScoreBoundsTest, AgainstACollectionOnlyInputMotifsCount) {
    const DatabaseTwin twins[] = {{DatasetsCombinedScoreDatabaseLists, maxScoresDatabaseList, getMaxScoresDatabase,
                                   calculateSumScoresCompareDatabase},
                                  {DatasetsCombinedScoreDatabaseGlobalLists, maxScoresDatabaseGlobalList,
                                   getMaxScoresDatabaseGlobal, calculateSumScoresCompareDatabaseGlobal}};
    for (const DatabaseTwin& twin : twins) {
        // List 2 holds the records of input motif 2; reference motif 1 must not raise input motif 1, and the id of
        // reference motif 99 is never looked up.
        twin.lists = {{},
                      {record(2, 1, 0.75, 6), record(1, 2, 1.0, 5, PrimaryFlag::empty),
                       record(99, 2, 0.5, 4, PrimaryFlag::empty)},
                      {},
                      {}};
        twin.getBounds();
        ASSERT_EQ(twin.bounds.size(), 4U);
        expectBounds(twin.bounds[0], 0, 0.0, 0, 0);
        expectBounds(twin.bounds[1], 2, 1.0, 6, 5);
        twin.setScores();
        EXPECT_EQ(twin.lists[1][0].combinedScore, 0.125);
        EXPECT_EQ(twin.lists[1][1].combinedScore, 0.5);
        EXPECT_EQ(twin.lists[1][2].combinedScore, 1.25);
    }
}

}  // namespace
}  // namespace varnolix
