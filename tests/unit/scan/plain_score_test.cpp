#include "scan/plain_score.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <utility>

#include "plain/plain_scan.h"

namespace varnolix {
namespace {

const Column a = {1, 0, 0, 0};
const Column c = {0, 1, 0, 0};
const Column half = {0.5, 0.5, 0, 0};
const Column none = {std::nan(""), std::nan(""), std::nan(""), std::nan("")};

Matrix run(const Column& column, std::size_t count = 4) {
    return Matrix(count, column);
}

AlignmentScore score(const Matrix& left, const Matrix& leftReversed, const Matrix& right, const Matrix& rightReversed,
                     int shift = 0) {
    const AlignmentScore forward =
        plainScore({left, leftReversed}, {right, rightReversed}, shift, 1.0, Direction::forward);
    const AlignmentScore backward =
        plainScore({left, leftReversed}, {right, rightReversed}, shift, 1.0, Direction::backward);
    // The sums of these tests are exact in any order.
    EXPECT_EQ(forward.orientation, backward.orientation);
    EXPECT_TRUE(forward.score == backward.score || std::isnan(forward.score));
    return forward;
}

TEST(PlainScore, EqualMotifsScoreOne) {
    const AlignmentScore best = score(run(a), run(c), run(a), run(c));
    EXPECT_EQ(best.score, 1.0);
    EXPECT_EQ(best.orientation, Orientation::bothOriginal);
}

TEST(PlainScore, DifferentBasesScoreOneHalf) {
    EXPECT_EQ(score(run(a), run(a), run(c), run(c)).score, 0.5);
}

TEST(PlainScore, HalfSharedBaseScoresThreeQuarters) {
    EXPECT_EQ(score(run(a), run(a), run(half), run(half)).score, 0.75);
}

TEST(PlainScore, BestOrientationWins) {
    EXPECT_EQ(score(run(a), run(c), run(c), run(a)).orientation, Orientation::secondReversed);
    EXPECT_EQ(score(run(c), run(a), run(a), run(half)).orientation, Orientation::firstReversed);
    EXPECT_EQ(score(run(c), run(a), run(half), run(a)).orientation, Orientation::bothReversed);
}

TEST(PlainScore, FirstOfEqualScoresWins) {
    EXPECT_EQ(score(run(a), run(a), run(a), run(a)).orientation, Orientation::bothOriginal);
    EXPECT_EQ(score(run(a), run(a), run(c), run(a)).orientation, Orientation::secondReversed);
    EXPECT_EQ(score(run(c), run(a), run(a), run(a)).orientation, Orientation::firstReversed);
}

TEST(PlainScore, OnlyFacingColumnsCount) {
    // Columns 2 and 3 of the left motif face columns 0 and 1 of the right one.
    const Matrix left = {c, c, a, a};
    const Matrix right = {a, a, c, c};
    EXPECT_EQ(score(left, left, right, right, -2).score, 1.0);
    EXPECT_EQ(score(right, right, left, left, 2).score, 1.0);
}

TEST(PlainScore, FirstScoreThatIsNoNumberStays) {
    const Matrix gap = {a, none, a, a};
    EXPECT_TRUE(std::isnan(score(gap, run(a), run(a), run(a)).score));
    EXPECT_EQ(score(gap, run(a), run(a), run(a)).orientation, Orientation::bothOriginal);
}

TEST(PlainScore, LaterScoreThatIsNoNumberIsPassedOver) {
    const Matrix gap = {a, none, a, a};
    const AlignmentScore best = score(run(c), run(a), run(a), gap);
    EXPECT_EQ(best.score, 1.0);
    EXPECT_EQ(best.orientation, Orientation::firstReversed);
}

TEST(PlainScore, ValuesOutsideTheUnitFollowTheSameRule) {
    const Column wide = {1.5, -0.5, 0, 0};
    // Cells 1 - 0.5, 1 - 0.5, 1, 1.
    EXPECT_EQ(score(run(a), run(a), run(wide), run(wide)).score, 0.75);
    // Cells 1 - 1.5, 1 - 1.5, 1, 1.
    EXPECT_EQ(score(run(c), run(c), run(wide), run(wide)).score, 0.25);
}

TEST(PlainScore, CellsAreRoundedBeforeTheyAreAdded) {
    // 1 - 2^-60 rounds to 1. A sum of unrounded cells would stay below.
    const Column almost = {1, 0x1p-60, 0, 0};
    EXPECT_EQ(score(run(a), run(a), run(almost), run(almost)).score, 1.0);
}

TEST(PlainScore, SumIsHeldInExtendedPrecision) {
    // The mean is 1 - 0.75 * 2^-53, whose nearest double is 1 - 2^-53. A sum of doubles would round to 1 at the second
    // cell.
    const Column next = {1, 0x1p-53, 0x1p-53, 0x1p-53};
    EXPECT_EQ(score(run(a), run(a), run(next), run(next)).score, 1 - 0x1p-53);
}

TEST(PlainScore, ColumnsAreAddedInTheOrderOfTheWalk) {
    // The first cells of the columns are -2^64, -2^11, -1 and -1; all others are 0. Added from first to last, each 1 is
    // lost in the 64 bits, and the sum lies halfway between two doubles. From last to first they add up to 2, which
    // counts.
    const Matrix matrix = {{0x1p64, 1, 1, 1}, {0x1p11 + 1, 1, 1, 1}, {2, 1, 1, 1}, {2, 1, 1, 1}};
    const Matrix zeros(4, Column{0, 0, 0, 0});
    const auto mean = [&](Direction direction) {
        return plainScore({matrix, matrix}, {zeros, zeros}, 0, 1.0, direction).score;
    };
    EXPECT_EQ(mean(Direction::forward), -0x1p60);
    EXPECT_EQ(mean(Direction::backward), -(0x1p60 + 0x1p8));
}

std::vector<ScoredShift> shiftsOf(const Matrix& left, const Matrix& right, double cutoff,
                                  OuterMotif outer = OuterMotif::left) {
    std::vector<ScoredShift> kept;
    appendPlainShifts({left, left}, {right, right}, outer, 5, 4, 1.0, cutoff, bothWalks, kept);
    return kept;
}

TEST(AppendPlainShifts, WalksEveryShiftInBothDirections) {
    const std::vector<ScoredShift> kept = shiftsOf(run(a, 5), run(a, 6), 0.9);
    // The shifts are -1 to 2, each once forward and once backward.
    ASSERT_EQ(kept.size(), 8U);
    for (std::size_t place = 0; place < kept.size(); ++place) {
        EXPECT_EQ(kept[place].shift, static_cast<int>(place / 2) - 1);
        EXPECT_EQ(kept[place].walks, place % 2 == 0 ? forwardWalk : backwardWalk);
        EXPECT_EQ(kept[place].partner, 5U);
        EXPECT_EQ(kept[place].score, 1.0);
    }
}

TEST(AppendPlainShifts, KeepsScoreEqualToCutoff) {
    EXPECT_EQ(shiftsOf(run(a), run(half), 0.75).size(), 2U);
    EXPECT_EQ(shiftsOf(run(a), run(half), std::nextafter(0.75, 1.0)).size(), 0U);
}

TEST(AppendPlainShifts, ShortMotifsGiveNothing) {
    EXPECT_TRUE(shiftsOf(run(a, 3), run(a, 9), 0.5).empty());
    EXPECT_TRUE(shiftsOf(run(a, 9), run(a, 3), 0.5).empty());
    EXPECT_TRUE(shiftsOf({}, run(a, 9), 0.5).empty());
}

TEST(AppendPlainShifts, ScoreThatIsNoNumberIsDropped) {
    const Matrix gap = {a, a, a, a, none};
    // Of the shifts -1, 0 and 1, only -1 leaves the last column without a partner.
    const std::vector<ScoredShift> kept = shiftsOf(run(a, 5), gap, 0.5);
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_EQ(kept[0].shift, -1);
}

TEST(AppendPlainShifts, LabelsNameTheOuterMotifFirst) {
    std::vector<ScoredShift> kept;
    // The reversed left motif matches the original right one. If the left motif is the outer one, this is "first
    // reversed"; if the right motif is, it is "second reversed".
    appendPlainShifts({run(c), run(a)}, {run(a), run(half)}, OuterMotif::left, 0, 4, 1.0, 0.9, bothWalks, kept);
    appendPlainShifts({run(c), run(a)}, {run(a), run(half)}, OuterMotif::right, 0, 4, 1.0, 0.9, bothWalks, kept);
    ASSERT_EQ(kept.size(), 4U);
    EXPECT_EQ(kept[0].orientation, Orientation::firstReversed);
    EXPECT_EQ(kept[2].orientation, Orientation::secondReversed);
}

/// Columns close to those of another motif of this length, so that many alignments are similar.
Matrix likeColumns(std::mt19937_64& engine, std::size_t length) {
    std::uniform_real_distribution<double> noise(0, 0.04);
    Matrix matrix;
    for (std::size_t k = 0; k < length; ++k) {
        const Column shares = {0.4, 0.1 + 0.1 * static_cast<double>(k % 3), 0.1, 0.2};
        Column& column = matrix.emplace_back();
        for (std::size_t base = 0; base < 4; ++base) column[base] = shares[base] + noise(engine);
    }
    return matrix;
}

/// An alignment by shift and direction, with all its fields.
using Told = std::map<std::pair<int, Walks>, std::pair<double, Orientation>>;

Told toldByDefinition(const data& left, const data& right, double cutoff) {
    std::vector<plain::Alignment> alignments;
    plain::scorePair(left, right, cutoff, alignments);
    const int difference = static_cast<int>(right.matrix.size()) - static_cast<int>(left.matrix.size());
    Told told;
    for (const plain::Alignment& one : alignments) {
        const bool isForward = one.direction == Direction::forward;
        const int offset =
            one.region == plain::Region::second ? -static_cast<int>(one.offset) : static_cast<int>(one.offset);
        told[{isForward ? offset : difference - offset, isForward ? forwardWalk : backwardWalk}] = {one.score,
                                                                                                    one.orientation};
    }
    return told;
}

Told told(const std::vector<ScoredShift>& kept) {
    Told result;
    for (const ScoredShift& one : kept) result[{one.shift, one.walks}] = {one.score, one.orientation};
    return result;
}

TEST(AppendPlainShifts, LongMotifsScoreAsDefinedBitForBit) {
    std::mt19937_64 engine(77);
    std::size_t compared = 0;
    std::size_t orderShows = 0;
    const std::pair<std::size_t, std::size_t> lengths[] = {{256, 30},  {255, 256}, {300, 280},
                                                           {512, 513}, {600, 640}, {1100, 900}};
    for (const auto& [leftLength, rightLength] : lengths) {
        data left;
        data right;
        left.matrix = likeColumns(engine, leftLength);
        left.revCompMatrix = likeColumns(engine, leftLength);
        right.matrix = likeColumns(engine, rightLength);
        right.revCompMatrix = likeColumns(engine, rightLength);
        const Told all = toldByDefinition(left, right, 0.0);
        std::vector<double> scores;
        for (const auto& [place, known] : all) scores.push_back(known.first);
        std::sort(scores.begin(), scores.end());
        // A cutoff that equals one of the scores, the next double, and a cutoff that keeps everything.
        const double met = scores[scores.size() * 3 / 4];
        for (const double cutoff : {met, std::nextafter(met, 2.0), 0.0}) {
            Told expected;
            for (const auto& one : all) {
                if (one.second.first >= cutoff) expected.insert(one);
            }
            const auto scored = [&](Walks asked) {
                std::vector<ScoredShift> kept;
                appendPlainShifts({left.matrix, left.revCompMatrix}, {right.matrix, right.revCompMatrix},
                                  OuterMotif::left, 0, 4, 1.0, cutoff, asked, kept);
                return told(kept);
            };
            EXPECT_TRUE(scored(bothWalks) == expected) << leftLength << " cutoff " << cutoff;
            Told merged = scored(forwardWalk);
            merged.merge(scored(backwardWalk));
            EXPECT_TRUE(merged == expected) << leftLength << " cutoff " << cutoff;
            compared += expected.size();
        }
        for (const auto& [place, known] : all) {
            if (place.second == backwardWalk) continue;
            if (known.first != all.at({place.first, backwardWalk}).first) ++orderShows;
        }
    }
    EXPECT_GT(compared, 10000U);
    EXPECT_GT(orderShows, 0U) << "or the order of addition is not tried";
}

}  // namespace
}  // namespace varnolix
