#include "input/readers.h"

#include <cmath>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::blockOf;

class ReadMatrixHInputTest : public testing::RunTest {
  protected:
    ReadMatrixHInputTest() { FileNameType.resize(1); }
};

TEST_F(ReadMatrixHInputTest, RowsAreTheBases) {
    readMatrixHInput(blockOf({"1 0", "0 1", "0 0", "0 0"}), 0);
    ASSERT_EQ(Datasets.size(), 1U);
    EXPECT_EQ(Datasets[0].matrix, (Matrix{{1, 0, 0, 0}, {0, 1, 0, 0}}));
    EXPECT_EQ(Datasets[0].consensus, "AC");
    EXPECT_EQ(Datasets[0].motifName, "NA");
    EXPECT_EQ(FileNameType[0].motifCount, 1);
}

TEST_F(ReadMatrixHInputTest, CountsAreDividedBySum) {
    EXPECT_EQ(matrixOfHorizontalRows(blockOf({"10 1.5", "30 0.5", "60 1", "0 1.0"})),
              (Matrix{{0.1, 0.3, 0.6, 0.0}, {0.375, 0.125, 0.25, 0.25}}));
}

TEST_F(ReadMatrixHInputTest, FourByFourIsFourPositions) {
    EXPECT_EQ(matrixOfHorizontalRows(blockOf({"1 0 0 0", "0 1 0 0", "0 0 1 0", "0 0 0 1"})),
              (Matrix{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}));
    EXPECT_EQ(matrixOfHorizontalRows(blockOf({"1 2 3 4", "1 2 3 4", "1 2 3 4", "1 2 3 4"})),
              Matrix(4, Column{0.25, 0.25, 0.25, 0.25}));
}

TEST_F(ReadMatrixHInputTest, WhatIsNoNumberCountsZero) {
    EXPECT_EQ(matrixOfHorizontalRows(blockOf({"1 x", "1 1", "1 1", "1 2"})),
              (Matrix{{0.25, 0.25, 0.25, 0.25}, {0, 0.25, 0.25, 0.5}}));
}

TEST_F(ReadMatrixHInputTest, PositionOfSumZeroIsNoNumber) {
    const Matrix matrix = matrixOfHorizontalRows(blockOf({"0 1", "0 0", "0 0", "0 0"}));
    ASSERT_EQ(matrix.size(), 2U);
    for (const double value : matrix[0]) EXPECT_TRUE(std::isnan(value));
    EXPECT_EQ(matrix[1], (Column{1, 0, 0, 0}));
}

TEST_F(ReadMatrixHInputTest, NegativeValueKeepsItsSign) {
    EXPECT_EQ(matrixOfHorizontalRows(blockOf({"2 1", "-1 1", "1 1", "0 1"})),
              (Matrix{{1.0, -0.5, 0.5, 0.0}, {0.25, 0.25, 0.25, 0.25}}));
}

}  // namespace
}  // namespace varnolix
