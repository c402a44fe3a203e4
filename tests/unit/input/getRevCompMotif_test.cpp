#include "input/getRevCompMotif.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace varnolix {
namespace {

Column only(const Column& column) {
    return getRevCompMotif({column})[0];
}

TEST(RevCompMotif, EmptyMatrixStaysEmpty) {
    EXPECT_TRUE(getRevCompMotif({}).empty());
}

TEST(RevCompMotif, PositionsAreReversed) {
    const Matrix reversed = getRevCompMotif({{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 1}});
    EXPECT_EQ(reversed, (Matrix{{1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}));
}

TEST(RevCompMotif, OnlyThePairOfTheBestBaseIsSwapped) {
    EXPECT_EQ(only({0.7, 0.2, 0.1, 0.0}), (Column{0.0, 0.2, 0.1, 0.7}));
    EXPECT_EQ(only({0.1, 0.2, 0.3, 0.4}), (Column{0.4, 0.2, 0.3, 0.1}));
    EXPECT_EQ(only({0.1, 0.6, 0.1, 0.2}), (Column{0.1, 0.1, 0.6, 0.2}));
    EXPECT_EQ(only({0.1, 0.0, 0.7, 0.2}), (Column{0.1, 0.7, 0.0, 0.2}));
}

TEST(RevCompMotif, FirstOfEqualMaximaDecides) {
    EXPECT_EQ(only({0.4, 0.4, 0.1, 0.1}), (Column{0.1, 0.4, 0.1, 0.4}));  // A before C
    EXPECT_EQ(only({0.1, 0.4, 0.1, 0.4}), (Column{0.1, 0.1, 0.4, 0.4}));  // C before T
    EXPECT_EQ(only({0.1, 0.1, 0.4, 0.4}), (Column{0.1, 0.4, 0.1, 0.4}));  // G before T
    EXPECT_EQ(only({0.25, 0.25, 0.25, 0.25}), (Column{0.25, 0.25, 0.25, 0.25}));
}

TEST(RevCompMotif, AllZeroColumnSwapsTheFirstPair) {
    EXPECT_TRUE(swapsAT({0, 0, 0, 0}));
    EXPECT_EQ(only({0, 0, 0, 0}), (Column{0, 0, 0, 0}));
}

TEST(RevCompMotif, ColumnWithoutValueAboveZeroSwapsTheFirstPair) {
    EXPECT_EQ(only({-0.1, -0.5, -0.2, -0.3}), (Column{-0.3, -0.5, -0.2, -0.1}));
    EXPECT_TRUE(swapsAT({std::nan(""), std::nan(""), std::nan(""), std::nan("")}));
}

TEST(RevCompMotif, TwiceNeedNotGiveTheInputBack) {
    // A and C are equal. A decides at first; in the result, C comes before the equal T.
    const Matrix once = getRevCompMotif({{0.4, 0.4, 0.2, 0.0}});
    EXPECT_EQ(once, (Matrix{{0.0, 0.4, 0.2, 0.4}}));
    EXPECT_EQ(getRevCompMotif(once), (Matrix{{0.0, 0.2, 0.4, 0.4}}));
}

TEST(RevCompMotif, TwiceGivesTheInputBackWithoutTies) {
    const Matrix motif = {{0.7, 0.2, 0.1, 0.0}, {0.1, 0.2, 0.6, 0.1}, {0.2, 0.1, 0.3, 0.4}};
    EXPECT_EQ(getRevCompMotif(getRevCompMotif(motif)), motif);
}

}  // namespace
}  // namespace varnolix
