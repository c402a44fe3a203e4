#include "report/text/motif_text.h"

#include <cmath>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

const data motif = testing::motifOfMatrix(1, {{1, 0, 0, 0}, {0.1, 0.2, 0.3, 0.4}});

const char* const block =
    "Original motif\n"
    "1.000000    0.000000    0.000000    0.000000    \n"
    "0.100000    0.200000    0.300000    0.400000    \n"
    "Consensus sequence: AB\n"
    "\n"
    "Reverse complement motif\n"
    "0.400000    0.200000    0.300000    0.100000    \n"
    "0.000000    0.000000    0.000000    1.000000    \n"
    "Consensus sequence: VT\n";

TEST(MotifText, CellsAreTwelveWide) {
    EXPECT_EQ(matrixRows({{1, 0, 0, 0}}), "1.000000    0.000000    0.000000    0.000000    \n");
    EXPECT_EQ(matrixRows({}), "");
    // Wider values are not cut off.
    EXPECT_EQ(matrixRows({{123456.5, -0.5, 0, 0}}), "123456.500000-0.500000   0.000000    0.000000    \n");
}

TEST(MotifText, CellsThatAreNoNumbersPrintAsTheyAre) {
    const double zero = 0.0;
    const double nan = std::nan("");
    EXPECT_EQ(matrixRows({{nan, -nan, zero, 1}}), "nan         -nan        0.000000    1.000000    \n");
}

TEST(MotifText, BothMatricesWithTheirTexts) {
    EXPECT_EQ(matrixBlock(motif), block);
}

TEST(MotifText, SecondMatrixMayHaveAnotherTitle) {
    const std::string text = matrixBlock(motif, "Reserve complement motif");
    EXPECT_NE(text.find("\n\nReserve complement motif\n"), std::string::npos);
    EXPECT_EQ(text.find("Reverse"), std::string::npos);
}

TEST(MotifText, BriefBlockHoldsTheTextsOnly) {
    EXPECT_EQ(consensusBlock(motif),
              "Consensus sequence (original motif): AB\n"
              "Consensus sequence (reverse complement motif): VT\n");
}

TEST(MotifText, KeptBlocksBelongToTheirMotif) {
    const std::vector<data> motifs = {testing::motifOfText(1, "CCCC"), motif, testing::motifOfText(3, "")};
    std::vector<std::string> texts;
    EXPECT_EQ(keptMatrixBlock(motifs, motifs[1], texts), block);
    EXPECT_EQ(keptMatrixBlock(motifs, motifs[1], texts), block);
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_TRUE(texts[0].empty());
    EXPECT_EQ(keptMatrixBlock(motifs, motifs[0], texts), matrixBlock(motifs[0]));
    EXPECT_EQ(keptMatrixBlock(motifs, motifs[2], texts),
              "Original motif\nConsensus sequence: \n\nReverse complement motif\nConsensus sequence: \n");
}

}  // namespace
}  // namespace varnolix
