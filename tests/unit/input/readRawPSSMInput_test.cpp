#include "input/readers.h"

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::blockOf;

class ReadRawPSSMInputTest : public testing::RunTest {
  protected:
    ReadRawPSSMInputTest() { FileNameType.resize(1); }

    const data& readBlock(std::initializer_list<std::string_view> lines) {
        readRawPSSMInput(blockOf(lines), 0);
        return Datasets.back();
    }
};

TEST_F(ReadRawPSSMInputTest, NameLosesItsFirstCharacter) {
    EXPECT_EQ(readBlock({">m1", "1 0 0 0", "0 1 0 0"}).motifName, "m1");
    EXPECT_EQ(readBlock({"m1", "1 0 0 0", "0 1 0 0"}).motifName, "1");
}

TEST_F(ReadRawPSSMInputTest, EmptyNameIsNA) {
    EXPECT_EQ(readBlock({">", "1 0 0 0", "0 1 0 0"}).motifName, "NA");
}

TEST_F(ReadRawPSSMInputTest, RowsOfFourNumbersArePositions) {
    EXPECT_EQ(readBlock({">m1", "1 0 0 0", "1 1 2 0"}).matrix, (Matrix{{1, 0, 0, 0}, {0.25, 0.25, 0.5, 0}}));
}

TEST_F(ReadRawPSSMInputTest, RowsWithOddTokensAreSkipped) {
    EXPECT_EQ(readBlock({">m1", "A C G T", "1 0 0 0", "1 -1 0 0", "0 1e0 0 0", "0 1 0 0", "0 0 0"}).matrix,
              (Matrix{{1, 0, 0, 0}, {0, 1, 0, 0}}));
}

TEST_F(ReadRawPSSMInputTest, LoneNameIsAnEmptyMotif) {
    const data& motif = readBlock({">lone"});
    EXPECT_EQ(motif.motifName, "lone");
    EXPECT_TRUE(motif.matrix.empty());
    EXPECT_EQ(motif.motifNum, 1);
}

}  // namespace
}  // namespace varnolix
