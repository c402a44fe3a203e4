#include "job/families/placement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace varnolix::job {
namespace {

constexpr Column a = {1, 0, 0, 0};
constexpr Column c = {0, 1, 0, 0};
constexpr Column g = {0, 0, 1, 0};
constexpr Column t = {0, 0, 0, 1};

TEST(PlacementTest, AMotifAloneIsItsColumns) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    const PlacedGroup group = placedAlone(7, {a, {none, none, none, none}}, 3.0);
    ASSERT_EQ(group.motifs.size(), 1U);
    EXPECT_EQ(group.motifs[0].motif, 7U);
    EXPECT_EQ(meansOf(group, {0, 2}), (Matrix{a, {0.25, 0.25, 0.25, 0.25}}));
    EXPECT_EQ(group.columns[0].weight, 3.0);
}

TEST(PlacementTest, AveragesWhereBothLieAndCopiesTheRest) {
    // The second motif begins one column before the first, and weighs three times as much.
    PlacedGroup group = placedAlone(0, {a, c, g}, 1.0);
    joinGroups(group, placedAlone(1, {t, g}, 3.0), 1);
    EXPECT_EQ(meansOf(group, {0, 4}), (Matrix{t, {0.25, 0, 0.75, 0}, c, g}));
    EXPECT_EQ(group.motifs[0].offset, 1);
    EXPECT_EQ(group.motifs[1].offset, 0);
    EXPECT_EQ(group.weight, 4.0);
    // And one that begins two columns behind the first of them, and reaches past the end.
    joinGroups(group, placedAlone(2, {c, g, t}, 1.0), -2);
    EXPECT_EQ(meansOf(group, {2, 3}), (Matrix{c, g, t}));
    EXPECT_EQ(group.motifs[2].offset, 2);
    EXPECT_EQ(group.columns[2].weight, 2.0);
    EXPECT_EQ(group.columns[4].weight, 1.0);
}

TEST(PlacementTest, TheOtherStrandTurnsEverything) {
    PlacedGroup group = placedAlone(0, {a, a, c, g}, 1.0);
    joinGroups(group, placedAlone(1, {c, g}, 1.0), -2);
    reverseGroup(group);
    EXPECT_EQ(meansOf(group, {0, 4}), (Matrix{c, g, t, t}));
    EXPECT_EQ(group.motifs[0].offset, 0);
    EXPECT_EQ(group.motifs[1].offset, 0);
    EXPECT_TRUE(group.motifs[0].isReversed);
    EXPECT_TRUE(group.motifs[1].isReversed);
    reverseGroup(group);
    EXPECT_FALSE(group.motifs[1].isReversed);
    EXPECT_EQ(group.motifs[1].offset, 2);
}

TEST(PlacementTest, EqualColumnsStayAsTheyAre) {
    const Matrix matrix = {{0.1, 0.2, 0.3, 0.4}, {0.7, 0.1, 0.1, 0.1}};
    PlacedGroup group = placedAlone(0, matrix, 1.0);
    for (std::size_t n = 1; n < 60; ++n) joinGroups(group, placedAlone(n, matrix, static_cast<double>(n)), 0);
    EXPECT_EQ(meansOf(group, {0, 2}), matrix);
}

TEST(PlacementTest, CutsFlanksThatFewCover) {
    PlacedGroup group = placedAlone(0, {a, c, g}, 1.0);
    joinGroups(group, placedAlone(1, {c, g}, 1.0), -1);
    joinGroups(group, placedAlone(2, {g, t}, 1.0), -2);  // the columns have weights 1, 2, 3, 1
    const auto partOf = [&](double share) {
        const AxisPart part = withoutFlanks(group, share);
        return std::pair(part.first, part.columns);
    };
    EXPECT_EQ(partOf(0.0), std::pair(std::size_t{0}, std::size_t{4}));
    EXPECT_EQ(partOf(1.0 / 3.0), std::pair(std::size_t{0}, std::size_t{4}));
    EXPECT_EQ(partOf(0.34), std::pair(std::size_t{1}, std::size_t{2}));
    EXPECT_EQ(partOf(1.0), std::pair(std::size_t{2}, std::size_t{1}));
}

TEST(PlacementTest, KeepsTheWeightiestColumnsWhereNoneHasTheShare) {
    PlacedGroup group = placedAlone(0, {a, c}, 1.0);
    joinGroups(group, placedAlone(1, {c, g}, 1.0), -1);
    joinGroups(group, placedAlone(2, {g, t}, 1.0), -2);  // 1, 2, 2, 1
    const AxisPart part = withoutFlanks(group, 0.9);
    EXPECT_EQ(part.first, 1U);
    EXPECT_EQ(part.columns, 2U);
}

}  // namespace
}  // namespace varnolix::job
