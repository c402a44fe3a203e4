#include "scan/score_bounds.h"

#include <gtest/gtest.h>

namespace varnolix {
namespace {

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

}  // namespace
}  // namespace varnolix
