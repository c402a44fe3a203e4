#include "tree/distance_table.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <sstream>

namespace varnolix {
namespace {

constexpr double none = std::numeric_limits<double>::infinity();

std::string written(const DistanceTable& table, char letter) {
    std::ostringstream stream;
    writeDistanceTable(stream, table, letter);
    return stream.str();
}

TEST(CsvCell, PlainTextIsUnchanged) {
    EXPECT_EQ(csvCell("I1_MA0004.1"), "I1_MA0004.1");
    EXPECT_EQ(csvCell("I2_Motif 3"), "I2_Motif 3");
    EXPECT_EQ(csvCell("I3_5'-end"), "I3_5'-end");
    EXPECT_EQ(csvCell(""), "");
}

TEST(CsvCell, TextsThatWouldBreakTheRowAreQuoted) {
    EXPECT_EQ(csvCell("a,b"), "\"a,b\"");
    EXPECT_EQ(csvCell("say \"x\""), "\"say \"\"x\"\"\"");
    EXPECT_EQ(csvCell("two\nlines"), "\"two\nlines\"");
    EXPECT_EQ(csvCell("old\rMac"), "\"old\rMac\"");
}

TEST(DistanceTable, CellIsThatOfThePairInEitherOrder) {
    const DistanceTable table{{"a", "b"}, {0.125}, 3};
    EXPECT_EQ(written(table, 'I'), ",I1_a,I2_b,\nI1_a,0,0.125,\nI2_b,0.125,0,\n");
}

TEST(DistanceTable, PairWithoutRecordHasTheValueOfTheTable) {
    const DistanceTable table{{"a", "b", "c"}, {1.5, none, none}, 7};
    EXPECT_EQ(written(table, 'G'), ",G1_a,G2_b,G3_c,\nG1_a,0,1.5,7,\nG2_b,1.5,0,7,\nG3_c,7,7,0,\n");
}

TEST(DistanceTable, NumbersHaveSixSignificantDigits) {
    const DistanceTable table{{"a", "b"}, {0.123456789}, 2};
    EXPECT_NE(written(table, 'I').find("I1_a,0,0.123457,\n"), std::string::npos);
}

TEST(DistanceTable, MotifHasDistanceZeroFromItself) {
    const DistanceTable table{{"a"}, {}, 2};
    EXPECT_EQ(written(table, 'I'), ",I1_a,\nI1_a,0,\n");
}

TEST(DistanceTable, EveryPairHasACellOfItsOwn) {
    constexpr std::size_t motifs = 7;
    std::set<std::size_t> cells;
    for (std::size_t motif = 0; motif < motifs; ++motif) {
        for (std::size_t other = 0; other < motif; ++other) {
            EXPECT_EQ(pairCell(motif, other), pairCell(other, motif));
            EXPECT_LT(pairCell(motif, other), pairsOf(motifs));
            cells.insert(pairCell(motif, other));
        }
    }
    EXPECT_EQ(cells.size(), pairsOf(motifs));
    EXPECT_EQ(pairsOf(0), 0U);
    EXPECT_EQ(pairsOf(100'000), 4'999'950'000U);
}

}  // namespace
}  // namespace varnolix
