#include "input/readers.h"

#include <cmath>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::blockOf;

class ReadSeqAlignInputTest : public testing::RunTest {
  protected:
    ReadSeqAlignInputTest() { FileNameType.resize(1); }

    const data& readBlock(std::initializer_list<std::string_view> lines) {
        readSeqAlignInput(blockOf(lines), 0);
        return Datasets.back();
    }
};

TEST_F(ReadSeqAlignInputTest, GapsCountForNoBase) {
    const data& motif = readBlock({">m", "ACGT", "ACGA", "ACG-"});
    EXPECT_EQ(motif.matrix, (Matrix{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0.5, 0, 0, 0.5}}));
    EXPECT_EQ(motif.consensus, "ACGW");
}

TEST_F(ReadSeqAlignInputTest, CountsAreDividedBySum) {
    EXPECT_EQ(readBlock({">m", "A", "A", "C", "G"}).matrix, (Matrix{{0.5, 0.25, 0.25, 0}}));
    const double third = 1.0 / 3.0;
    EXPECT_EQ(readBlock({">m", "A", "C", "T", "-"}).matrix, (Matrix{{third, third, 0, third}}));
}

TEST_F(ReadSeqAlignInputTest, ColumnOfGapsIsNoNumber) {
    const data& motif = readBlock({">m", "A-", "C-"});
    ASSERT_EQ(motif.matrix.size(), 2U);
    for (const double value : motif.matrix[1]) EXPECT_TRUE(std::isnan(value));
    EXPECT_EQ(motif.consensus, "MN");
}

TEST_F(ReadSeqAlignInputTest, NameLosesItsFirstCharacterOrIsNA) {
    EXPECT_EQ(readBlock({">cre", "TGAC", "TGAC"}).motifName, "cre");
    EXPECT_EQ(readBlock({"x", "TGAC", "TGAC"}).motifName, "NA");
}

}  // namespace
}  // namespace varnolix
