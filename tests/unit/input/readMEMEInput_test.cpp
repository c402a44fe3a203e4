#include "input/readers.h"

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::blockOf;

class ReadMEMEInputTest : public testing::RunTest {
  protected:
    ReadMEMEInputTest() { FileNameType.resize(1); }

    const data& readRows(std::initializer_list<std::string_view> lines) {
        Block block = blockOf({"----", "title of the motif", "----", "letter-probability matrix: w= 2"});
        for (const std::string_view line : lines) block.push_back(splitTokens(line));
        readMEMEInput(block, 0);
        return Datasets.back();
    }
};

TEST_F(ReadMEMEInputTest, NameIsTheIdOfTheRun) {
    EXPECT_EQ(readRows({"1 0 0 0"}).motifName, "Motif 1");
    matrixIDNum = 3;
    mNum = 1;
    EXPECT_EQ(readRows({"1 0 0 0"}).motifName, "Motif 3");
    EXPECT_EQ(Datasets.back().motifNum, 1);
}

TEST_F(ReadMEMEInputTest, RowsOfFourNumbersArePositions) {
    const data& motif = readRows({"0.25 0.25 0.25 0.25", "1.0 0.0 0.0 0.0"});
    EXPECT_EQ(motif.matrix, (Matrix{{0.25, 0.25, 0.25, 0.25}, {1, 0, 0, 0}}));
    EXPECT_EQ(motif.consensus, "NA");
}

TEST_F(ReadMEMEInputTest, RowsAreDividedBySum) {
    EXPECT_EQ(readRows({"0.5 0.5 0.5 0.5"}).matrix, (Matrix{{0.25, 0.25, 0.25, 0.25}}));
}

TEST_F(ReadMEMEInputTest, OtherRowsAreSkipped) {
    EXPECT_EQ(readRows({"1 0 0 0 0", "1e0 0 0 0", "a b c d", "0 1 0 0", "1 0 0"}).matrix, (Matrix{{0, 1, 0, 0}}));
}

TEST_F(ReadMEMEInputTest, TitleOfFourNumbersIsAPosition) {
    readMEMEInput(blockOf({"----", "1 0 0 0", "----", "letter-probability", "0 1 0 0"}), 0);
    EXPECT_EQ(Datasets.back().matrix, (Matrix{{1, 0, 0, 0}, {0, 1, 0, 0}}));
}

}  // namespace
}  // namespace varnolix
