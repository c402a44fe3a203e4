#include "input/readers.h"

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::blockOf;

class ReadTransfacInputTest : public testing::RunTest {
  protected:
    ReadTransfacInputTest() { FileNameType.resize(1); }

    const data& readBlock(std::initializer_list<std::string_view> lines) {
        readTransfacInput(blockOf(lines), 0);
        return Datasets.back();
    }
};

TEST_F(ReadTransfacInputTest, SecondTokenIsTheName) {
    EXPECT_EQ(readBlock({"DE motif", "01 1 0 0 0", "XX"}).motifName, "motif");
    EXPECT_EQ(readBlock({"anything >m1", "01 1 0 0 0", "XX"}).motifName, ">m1");
}

TEST_F(ReadTransfacInputTest, SixthTokenChangesNothing) {
    EXPECT_EQ(readBlock({"DE m", "01 1 2 3 4", "01 1 2 3 4 T", "01 1 2 3 4 anything"}).matrix,
              Matrix(3, Column{0.1, 0.2, 0.3, 0.4}));
}

TEST_F(ReadTransfacInputTest, HeadLinesAreSkipped) {
    EXPECT_EQ(readBlock({"ID m", "P0 A C G T", "P0 A C G T X", "01 1 0 0 0 A", "XX", "//"}).matrix,
              (Matrix{{1, 0, 0, 0}}));
}

TEST_F(ReadTransfacInputTest, LinesOfOtherLengthAreSkipped) {
    EXPECT_EQ(readBlock({"ID m", "01 1 0 0 0 A A", "1 0 0 0", "02 0 1 0 0"}).matrix, (Matrix{{0, 1, 0, 0}}));
}

TEST_F(ReadTransfacInputTest, PositionsStandInTheOrderOfLines) {
    EXPECT_EQ(readBlock({"ID m", "09 1 0 0 0", "x 0 1 0 0", "01 0 0 1 0"}).matrix,
              (Matrix{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}));
}

TEST_F(ReadTransfacInputTest, WholeAndDecimalCountsMix) {
    EXPECT_EQ(readBlock({"ID m", "1 1.5 .5 1 1."}).matrix, (Matrix{{0.375, 0.125, 0.25, 0.25}}));
}

TEST_F(ReadTransfacInputTest, FirstLineMayBeAPositionToo) {
    // In a block recognised by its shape this line has two tokens, so only a direct call can show this.
    EXPECT_EQ(matrixOfTransfacLines(blockOf({"01 1 0 0 0", "02 0 1 0 0"})).size(), 2U);
}

TEST_F(ReadTransfacInputTest, BlockWithoutPositionIsAnEmptyMotif) {
    EXPECT_TRUE(readBlock({"ID m", "a", "b", "c", "d", "e"}).matrix.empty());
}

}  // namespace
}  // namespace varnolix
