#include "input/readers.h"

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::blockOf;

class ReadMatrixVInputTest : public testing::RunTest {
  protected:
    ReadMatrixVInputTest() { FileNameType.resize(1); }
};

TEST_F(ReadMatrixVInputTest, RowsArePositions) {
    readMatrixVInput(blockOf({"10 30 60 0", "0.1 0.3 0.6 0.0", "0 0 0 5"}), 0);
    ASSERT_EQ(Datasets.size(), 1U);
    const data& motif = Datasets[0];
    ASSERT_EQ(motif.matrix.size(), 3U);
    EXPECT_EQ(motif.matrix[0], (Column{0.1, 0.3, 0.6, 0.0}));
    EXPECT_EQ(motif.matrix[2], (Column{0, 0, 0, 1}));
    for (std::size_t base = 0; base < 4; ++base) EXPECT_DOUBLE_EQ(motif.matrix[1][base], motif.matrix[0][base]);
    EXPECT_EQ(motif.consensus, "GGT");
    EXPECT_EQ(motif.revCompConsensus, "ACC");
    EXPECT_EQ(motif.motifName, "NA");
}

TEST_F(ReadMatrixVInputTest, RowsOfOtherLengthAreSkipped) {
    EXPECT_EQ(matrixOfVerticalRows(blockOf({"1 0 0 0 0", "1 0 0 0", "1 0 0", "0 1 0 0", "1"})),
              (Matrix{{1, 0, 0, 0}, {0, 1, 0, 0}}));
}

TEST_F(ReadMatrixVInputTest, RowsOfFourWordsCountZero) {
    // The reader only checks the number of tokens; the shape of the block was checked before.
    EXPECT_EQ(matrixOfVerticalRows(blockOf({"1 x y z"})), (Matrix{{1, 0, 0, 0}}));
}

TEST_F(ReadMatrixVInputTest, BlockWithoutPositionIsAnEmptyMotif) {
    readMatrixVInput(blockOf({"1 2 3"}), 0);
    ASSERT_EQ(Datasets.size(), 1U);
    EXPECT_TRUE(Datasets[0].matrix.empty());
    EXPECT_EQ(Datasets[0].consensus, "");
}

}  // namespace
}  // namespace varnolix
