#include "job/significance/column_pool.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "input/getRevCompMotif.h"
#include "support/random_motifs.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

using varnolix::testing::motifOfMatrix;
using varnolix::testing::motifOfText;
using varnolix::testing::RandomMotifs;

double distance(const Column& one, const Column& other) {
    double sum = 0.0;
    for (std::size_t base = 0; base < 4; ++base) sum += std::fabs(one[base] - other[base]);
    return sum;
}

TEST(ColumnPoolTest, SwapsBothPairsOnTheOtherStrand) {
    EXPECT_EQ(oppositeStrand({{0.7, 0.2, 0.1, 0.0}, {0.1, 0.2, 0.3, 0.4}}),
              (Matrix{{0.4, 0.3, 0.2, 0.1}, {0.0, 0.1, 0.2, 0.7}}));
}

TEST(ColumnPoolTest, TakesColumnsWithoutCountsAsEven) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(usableMatrix({{none, none, none, none}, {1, 0, 0, 0}, {-1, 1, 1, 0}, {0, 0, 2, 0}}),
              (Matrix{{0.25, 0.25, 0.25, 0.25}, {1, 0, 0, 0}, {0.25, 0.25, 0.25, 0.25}, {0.25, 0.25, 0.25, 0.25}}));
    EXPECT_FALSE(isUsable({none, none, none, none}));
    EXPECT_TRUE(isUsable({0.0, 1.0, 0.0, 0.0}));
}

TEST(ColumnPoolTest, CountsColumnsOnBothStrands) {
    const std::vector<data> targets = {motifOfText(1, "AACG"), motifOfText(2, "AATA")};
    const ColumnPool pool(targets);
    std::vector<std::uint32_t> counts(3);
    pool.countDistances({1, 0, 0, 0}, Background::bothStrands, nullptr, 1, counts, vectorSteps());
    EXPECT_EQ(counts, (std::vector<std::uint32_t>{6, 0, 10}));
    EXPECT_EQ(pool.columns(nullptr), 16);
}

TEST(ColumnPoolTest, LeavesOutTheQuery) {
    const std::vector<data> targets = {motifOfText(1, "AACG"), motifOfText(2, "AATA")};
    const ColumnPool pool(targets);
    const std::size_t self = 0;
    std::vector<std::uint32_t> counts(3);
    pool.countDistances({1, 0, 0, 0}, Background::bothStrands, &self, 1, counts, vectorSteps());
    EXPECT_EQ(counts, (std::vector<std::uint32_t>{4, 0, 4}));
    EXPECT_EQ(pool.columns(&self), 8);
}

TEST(ColumnPoolTest, LeavesOutWhatIsTooShort) {
    const std::vector<data> targets = {motifOfText(1, "AACG"), motifOfText(2, "TTT"), motifOfMatrix(3, {})};
    const ColumnPool pool(targets);
    EXPECT_EQ(pool.targets(), 3);
    EXPECT_EQ(pool.comparedTargets(), 1);
    EXPECT_FALSE(pool.isCompared(1));
    const std::size_t self = 1;
    EXPECT_EQ(pool.columns(nullptr), 8);
    EXPECT_EQ(pool.columns(&self), 8);
}

TEST(ColumnPoolTest, CountsLikeAPlainWalk) {
    RandomMotifs random(3);
    const std::vector<data> targets = random.motifs(60, 1);
    const ColumnPool pool(targets);
    constexpr int stepsPerOne = 40;  // no sum of quarters or thirds lies close below a step
    const Column query = {0.41, 0.33, 0.17, 0.09};
    const std::size_t self = 7;
    for (const Background background : {Background::bothStrands, Background::onePairSwapped}) {
        std::vector<std::uint32_t> expected(81);
        for (std::size_t n = 0; n < targets.size(); ++n) {
            if (n == self || targets[n].matrix.size() < leastColumns) continue;
            for (const auto& [a, c, g, t] : targets[n].matrix) {
                const bool swaps = background == Background::onePairSwapped;
                for (const Column& form : {swaps ? Column{t, c, g, a} : Column{a, c, g, t},
                                           swaps ? Column{a, g, c, t} : Column{t, g, c, a}}) {
                    ++expected[static_cast<std::size_t>(distance(query, form) * stepsPerOne + 1e-7)];
                }
            }
        }
        std::vector<std::uint32_t> counts(81);
        pool.countDistances(query, background, &self, stepsPerOne, counts, vectorSteps());
        // Single precision may put a distance that is a whole number of steps one step lower.
        std::uint32_t found = 0;
        std::uint32_t wanted = 0;
        for (std::size_t step = 0; step < counts.size(); ++step) {
            found += counts[step];
            EXPECT_GE(found, wanted + expected[step]);
            wanted += expected[step];
            EXPECT_LE(found - wanted, step + 1 < counts.size() ? expected[step + 1] : 0U);
        }
        EXPECT_EQ(found, pool.columns(&self));
    }
}

TEST(ColumnPoolTest, BackgroundHoldsWhatTheReportsReverse) {
    RandomMotifs random(4);
    for (int n = 0; n < 200; ++n) {
        const Column column = random.column(static_cast<std::size_t>(n) % 3);
        const std::vector<data> targets = {motifOfMatrix(1, Matrix(4, column))};
        const ColumnPool pool(targets);
        const Column reversed = getRevCompMotif({column}).front();
        std::vector<std::uint32_t> counts(257);
        pool.countDistances(reversed, Background::onePairSwapped, nullptr, 128, counts, vectorSteps());
        EXPECT_GE(counts[0], 4U);
    }
}

}  // namespace
}  // namespace varnolix::job
