#include "input/getConsensusString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>

namespace varnolix {
namespace {

struct ColumnCase {
    Column column;
    const char* letter;
};

void expectAll(std::initializer_list<ColumnCase> cases) {
    for (const ColumnCase& each : cases) {
        EXPECT_EQ(getConsensusString({each.column}), each.letter)
            << each.column[0] << " " << each.column[1] << " " << each.column[2] << " " << each.column[3];
    }
}

TEST(ConsensusString, EmptyMatrixGivesEmptyText) {
    EXPECT_EQ(getConsensusString({}), "");
}

TEST(ConsensusString, SingleLetterNeedsMoreThanHalfAndTwiceTheSecond) {
    expectAll({{{1, 0, 0, 0}, "A"},
               {{0, 1, 0, 0}, "C"},
               {{0, 0, 1, 0}, "G"},
               {{0, 0, 0, 1}, "T"},
               {{0.6, 0.3, 0.1, 0.0}, "A"},
               {{0.55, 0.15, 0.15, 0.15}, "A"},
               {{0.1, 0.2, 0.1, 0.6}, "T"}});
}

TEST(ConsensusString, LeadBelowTwiceTheSecondNamesTwo) {
    expectAll({{{0.55, 0.3, 0.1, 0.05}, "M"}, {{0.0, 0.58, 0.3, 0.12}, "S"}});
}

TEST(ConsensusString, ExactlyHalfIsNotEnoughForOneLetter) {
    // Twice the second, but exactly half: A, C, and of G and T the latter.
    expectAll({{{0.5, 0.25, 0.125, 0.125}, "H"}, {{0.5, 0.5, 0.0, 0.0}, "M"}, {{0.0, 0.5, 0.5, 0.0}, "S"}});
}

TEST(ConsensusString, ExactlyThreeQuartersIsNotEnoughForTwo) {
    // 0.5 + 0.25 is exactly 0.75, so three are named; 0.25 three times is exactly 0.75, so none is.
    expectAll({{{0.25, 0.0, 0.25, 0.5}, "D"}, {{0.25, 0.25, 0.25, 0.25}, "N"}, {{0.0, 0.25, 0.25, 0.25}, "N"}});
}

TEST(ConsensusString, PairLetters) {
    expectAll({{{0.5, 0, 0.5, 0}, "R"},
               {{0, 0.5, 0, 0.5}, "Y"},
               {{0, 0.5, 0.5, 0}, "S"},
               {{0.5, 0, 0, 0.5}, "W"},
               {{0, 0, 0.5, 0.5}, "K"},
               {{0.5, 0.5, 0, 0}, "M"},
               {{0.45, 0.1, 0.4, 0.05}, "R"},
               {{0.4, 0.1, 0.45, 0.05}, "R"}});
}

TEST(ConsensusString, TripleLetters) {
    expectAll({{{0.0, 0.4, 0.3, 0.3}, "B"},
               {{0.4, 0.0, 0.3, 0.3}, "D"},
               {{0.4, 0.3, 0.0, 0.3}, "H"},
               {{0.4, 0.3, 0.3, 0.0}, "V"},
               {{0.4, 0.3, 0.2, 0.1}, "V"}});
}

TEST(ConsensusString, OfEqualValuesTheHigherBaseCountsAsLarger) {
    expectAll({{{0.3, 0.3, 0.2, 0.2}, "H"},      // C, A, T
               {{0.2, 0.3, 0.3, 0.2}, "B"},      // G, C, T
               {{0.34, 0.22, 0.22, 0.22}, "D"},  // A, T, G
               {{0.22, 0.34, 0.22, 0.22}, "B"},
               {{0.22, 0.22, 0.34, 0.22}, "B"},
               {{0.22, 0.22, 0.22, 0.34}, "B"}});
}

TEST(ConsensusString, TwoMajoritiesGiveNoLetter) {
    // Only possible if the sum exceeds 1: both are above one half, and the best is less than twice the second.
    EXPECT_EQ(getConsensusString({{0.9, 0.5, 0, 0}}), "");
    EXPECT_EQ(getConsensusString({{1, 0, 0, 0}, {0.6, 0.6, 0, 0}, {0, 0, 0, 1}}), "AT");
    EXPECT_EQ(getConsensusString({{0.5, 0.5, 0.5, 0}}), "S");  // the best is not above one half: G and C
}

TEST(ConsensusString, TwiceTheSecondTakesPrecedenceOverTwoMajorities) {
    EXPECT_EQ(getConsensusString({{1.0, 0.5, 0, 0}}), "A");
}

TEST(ConsensusString, AllZeroColumnIsAnyBase) {
    EXPECT_EQ(getConsensusString({{0, 0, 0, 0}}), "N");
}

TEST(ConsensusString, ColumnOfNotANumberIsAnyBase) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(getConsensusString({{nan, nan, nan, nan}}), "N");
}

TEST(ConsensusString, OneLetterPerPosition) {
    EXPECT_EQ(getConsensusString({{1, 0, 0, 0}, {0.25, 0.25, 0.25, 0.25}, {0, 0.5, 0, 0.5}, {0, 0, 1, 0}}), "ANYG");
}

/// A second implementation of the rule, which sorts whole cells.
std::string letterOf(const Column& column) {
    std::vector<std::pair<double, int>> cells;
    for (int base = 0; base < 4; ++base) cells.emplace_back(column[static_cast<std::size_t>(base)], base);
    std::sort(cells.rbegin(), cells.rend());
    const std::map<std::string, std::string> letters = {
        {"A", "A"},  {"C", "C"},  {"G", "G"},  {"T", "T"},   {"AG", "R"},  {"CT", "Y"},  {"CG", "S"},
        {"AT", "W"}, {"GT", "K"}, {"AC", "M"}, {"CGT", "B"}, {"AGT", "D"}, {"ACT", "H"}, {"ACG", "V"}};
    const auto name = [&](std::size_t count) {
        std::string bases;
        for (std::size_t place = 0; place < count; ++place) bases += "ACGT"[cells[place].second];
        std::sort(bases.begin(), bases.end());
        return letters.at(bases);
    };
    const double top = cells[0].first;
    const double second = cells[1].first;
    if (top > 0.5 && top / second >= 2.0) return name(1);
    if (top + second > 0.75) return top > 0.5 && second >= 0.5 ? "" : name(2);
    if (top + second + cells[2].first > 0.75) return name(3);
    return "N";
}

TEST(ConsensusString, AgreesWithTheRuleOnRandomColumns) {
    constexpr unsigned seed = 4711;
    std::mt19937 engine(seed);
    for (int round = 0; round < 20000; ++round) {
        Column column{};
        double sum = 0;
        for (double& value : column) sum += value = static_cast<double>(engine() % 9);
        // Sums above 1 occur as well, and coarse counts give many equal values.
        if (round % 4 != 0 && sum > 0) {
            for (double& value : column) value /= sum;
        } else {
            for (double& value : column) value /= 8;
        }
        ASSERT_EQ(getConsensusString({column}), letterOf(column))
            << "round " << round << " of seed " << seed << ": " << column[0] << " " << column[1] << " " << column[2]
            << " " << column[3];
    }
}

}  // namespace
}  // namespace varnolix
