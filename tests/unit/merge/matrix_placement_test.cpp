#include "merge/matrix_placement.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "merge/alignTwoMatrices.h"
#include "merge/combinedTwoMatrices.h"

// Placing, merging and drawing follow the same rules. The cases cover every rule, in both directions and with both
// flags.

namespace varnolix {
namespace {

constexpr Direction forward = Direction::forward;
constexpr Direction backward = Direction::backward;
constexpr PrimaryFlag flagY = PrimaryFlag::yes;
constexpr PrimaryFlag noFlag = PrimaryFlag::empty;

/// A matrix whose column k has factor * (k + 1) in its A cell.
Matrix counted(int length, double factor) {
    Matrix matrix;
    for (int column = 1; column <= length; ++column) matrix.push_back({factor * column, 0, 0, 0});
    return matrix;
}

struct Case {
    const char* name;
    PairAlignment alignment;
    std::vector<double> merged;  ///< from 1, 2, 3 ... and 10, 20, 30 ...
    const char* lines;           ///< from AAA... and CCC...
};

const Case cases[] = {
    {"position 1, forward", {5, 4, flagY, forward, 1, 4}, {5.5, 11, 16.5, 22, 5}, "AAAAA_CCCC-"},
    {"position 1, backward", {5, 4, flagY, backward, 1, 4}, {1, 6, 11.5, 17, 22.5}, "AAAAA_-CCCC"},
    {"position 0, forward", {5, 4, noFlag, forward, 0, 4}, {5.5, 11, 16.5, 22, 5}, "AAAAA_CCCC-"},
    {"position 0, backward", {5, 4, noFlag, backward, 0, 4}, {1, 6, 11.5, 17, 22.5}, "AAAAA_-CCCC"},
    {"second inside first, forward", {6, 4, noFlag, forward, 2, 4}, {1, 6, 11.5, 17, 22.5, 6}, "AAAAAA_-CCCC-"},
    {"second inside first, forward, Y", {6, 4, flagY, forward, 2, 4}, {1, 6, 11.5, 17, 22.5, 6}, "AAAAAA_-CCCC-"},
    {"second at the end of first", {6, 4, noFlag, forward, 3, 4}, {1, 2, 6.5, 12, 17.5, 23}, "AAAAAA_--CCCC"},
    {"second inside first, backward", {6, 4, noFlag, backward, 3, 4}, {5.5, 11, 16.5, 22, 5, 6}, "AAAAAA_CCCC--"},
    {"first inside second, forward", {4, 6, flagY, forward, 3, 4}, {10, 20, 15.5, 21, 26.5, 32}, "--AAAA_CCCCCC"},
    {"first inside second, forward, no flag",
     {4, 6, noFlag, forward, 3, 4},
     {10, 20, 15.5, 21, 26.5, 32},
     "--AAAA_CCCCCC"},
    {"first inside second, backward", {4, 6, flagY, backward, 2, 4}, {10, 10.5, 16, 21.5, 27, 60}, "-AAAA-_CCCCCC"},
    {"both stick out, Y, forward", {5, 5, flagY, forward, 2, 4}, {10, 10.5, 16, 21.5, 27, 5}, "-AAAAA_CCCCC-"},
    {"both stick out, Y, backward", {5, 5, flagY, backward, 2, 4}, {1, 6, 11.5, 17, 22.5, 50}, "AAAAA-_-CCCCC"},
    {"both stick out, no flag, forward", {5, 5, noFlag, forward, 2, 4}, {1, 6, 11.5, 17, 22.5, 50}, "AAAAA-_-CCCCC"},
    {"both stick out, no flag, backward", {5, 5, noFlag, backward, 2, 4}, {10, 10.5, 16, 21.5, 27, 5}, "-AAAAA_CCCCC-"},
    {"first longer, Y, forward", {6, 5, flagY, forward, 2, 4}, {10, 10.5, 16, 21.5, 27, 5, 6}, "-AAAAAA_CCCCC--"},
    {"first longer, no flag, forward", {6, 5, noFlag, forward, 3, 4}, {1, 2, 6.5, 12, 17.5, 23, 50}, "AAAAAA-_--CCCCC"},
    {"second longer, Y, forward", {5, 6, flagY, forward, 3, 4}, {10, 20, 15.5, 21, 26.5, 32, 5}, "--AAAAA_CCCCCC-"},
    {"second longer, Y, backward", {5, 6, flagY, backward, 3, 4}, {1, 6, 11.5, 17, 22.5, 50, 60}, "AAAAA--_-CCCCCC"},
    {"second longer, no flag, forward",
     {5, 6, noFlag, forward, 2, 4},
     {1, 6, 11.5, 17, 22.5, 50, 60},
     "AAAAA--_-CCCCCC"},
    {"second longer, no flag, backward",
     {5, 6, noFlag, backward, 2, 4},
     {10, 20, 15.5, 21, 26.5, 32, 5},
     "--AAAAA_CCCCCC-"},
    // The overlap does not follow from the length and position of the first matrix: both lines grow by 6 + 2.
    {"second longer, no flag, odd overlap, forward",
     {5, 6, noFlag, forward, 3, 4},
     {1, 2, 6.5, 12, 17.5, 40, 50},
     "AAAAA----------_--CCCCCC-------"},
    {"second longer, no flag, odd overlap, backward",
     {5, 6, noFlag, backward, 3, 4},
     {20, 30, 20.5, 26, 31.5, 4, 5},
     "----------AAAAA_-------CCCCCC--"},
    {"clipped at the end", {5, 5, flagY, forward, 4, 4}, {10, 20, 30, 20.5, 26, 3}, "---AAA_CCCCC-"},
    {"clipped at the start", {5, 5, flagY, backward, 4, 4}, {3, 7, 12.5, 30, 40, 50}, "AAA---_-CCCCC"},
    {"columns that neither covers", {4, 4, flagY, forward, 2, 0}, {10, 10.5, 16, 21.5, 4}, "-AAAA---_CCCC----"},
    {"axis below both lengths", {5, 5, flagY, forward, 2, 6}, {}, "----_----"},
};

TEST(MatrixPlacement, MergesByTheTable) {
    for (const Case& each : cases) {
        const Matrix merged = combinedTwoMatrices(counted(each.alignment.length1, 1),
                                                  counted(each.alignment.length2, 10), each.alignment);
        std::vector<double> values;
        for (const Column& column : merged) {
            values.push_back(column[0]);
            EXPECT_EQ(column[1], 0.0);
        }
        EXPECT_EQ(values, each.merged) << each.name;
    }
}

TEST(MatrixPlacement, DrawsByTheTable) {
    for (const Case& each : cases) {
        const Matrix first(static_cast<std::size_t>(each.alignment.length1), Column{1, 0, 0, 0});
        const Matrix second(static_cast<std::size_t>(each.alignment.length2), Column{0, 1, 0, 0});
        EXPECT_EQ(alignTwoMatrices(first, second, each.alignment), each.lines) << each.name;
    }
}

TEST(MatrixPlacement, EmptyAxisHasEmptyLines) {
    const Matrix one = {{1, 0, 0, 0}};
    EXPECT_EQ(alignTwoMatrices(one, one, {1, 1, flagY, forward, 1, 2}), "_");
}

TEST(CombinedTwoMatrices, EqualMatricesComeOutUnchanged) {
    const Matrix matrix = {{0.1, 0.2, 0.3, 0.4}, {1.0 / 3, 1.0 / 3, 1.0 / 3, 0}, {0, 0.7, 0.2, 0.1}, {1, 0, 0, 0}};
    EXPECT_EQ(combinedTwoMatrices(matrix, matrix, {4, 4, flagY, forward, 1, 4}), matrix);
}

TEST(CombinedTwoMatrices, EveryCellIsTheExactHalf) {
    const Matrix merged =
        combinedTwoMatrices({{0.1, 0.2, 0.3, 0.4}}, {{0.7, 0.1, 0.1, 0.1}}, {1, 1, flagY, forward, 1, 1});
    EXPECT_EQ(merged, (Matrix{{(0.1 + 0.7) * 0.5, (0.2 + 0.1) * 0.5, (0.3 + 0.1) * 0.5, (0.4 + 0.1) * 0.5}}));
}

TEST(CombinedTwoMatrices, LaterMatrixWeighsOneHalf) {
    const PairAlignment whole{1, 1, flagY, forward, 1, 1};
    const Matrix ab = combinedTwoMatrices({{1, 0, 0, 0}}, {{0, 1, 0, 0}}, whole);
    EXPECT_EQ(combinedTwoMatrices(ab, {{0, 0, 1, 0}}, whole), (Matrix{{0.25, 0.25, 0.5, 0}}));
}

}  // namespace
}  // namespace varnolix
