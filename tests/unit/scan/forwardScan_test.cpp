#include "scan/stages.h"

#include <set>

#include "plain/listed_records.h"
#include "plain/plain_records.h"
#include "support/run_fixture.h"

// The records of single pairs, worked out by hand.

namespace varnolix {
namespace {

using testing::motifOfMatrix;
using testing::motifOfText;
using testing::walked;
using testing::WalkedRecord;

constexpr const char* original = "Original Motif";
constexpr const char* reversed = "Reverse Complement";

class ScanTest : public testing::RunTest {
  protected:
    static void scanForward(std::vector<data> motifs, double cutoff) {
        Datasets = std::move(motifs);
        simCutoff = cutoff;
        forwardScan();
    }
    static void scanBoth(std::vector<data> motifs, double cutoff) {
        scanForward(std::move(motifs), cutoff);
        backwardScan();
    }
    static std::vector<WalkedRecord> recordsOf(std::size_t matrixID) {
        return walked(testing::allRecords(inputRecords(DatasetsCombinedScoreLists), Datasets.size()).at(matrixID - 1));
    }
};

TEST_F(ScanTest, OneMotifStoresNothing) {
    scanBoth({motifOfText(1, "ACGTACGT")}, 0.5);
    EXPECT_TRUE(recordsOf(1).empty());
}

TEST_F(ScanTest, ShortMotifTakesPartInNoPair) {
    scanBoth({motifOfText(1, "ACG"), motifOfText(2, "ACG"), motifOfText(3, "ACGT"), motifOfText(4, "ACGT")}, 0.5);
    EXPECT_TRUE(recordsOf(1).empty());
    EXPECT_TRUE(recordsOf(2).empty());
    for (const WalkedRecord& record : recordsOf(3)) EXPECT_EQ(record.matrixID2, 4);
    EXPECT_FALSE(recordsOf(3).empty());
}

TEST_F(ScanTest, MotifsOfFourColumnsHaveOneOffsetInEachRegion) {
    scanForward({motifOfText(1, "AAAA"), motifOfText(2, "AAAA")}, 0.9);
    EXPECT_EQ(recordsOf(1), (std::vector<WalkedRecord>{{1, 2, "Forward", "Y", 1, 4, 1.0, original, original}}));
    EXPECT_EQ(recordsOf(2), (std::vector<WalkedRecord>{{2, 1, "Forward", "", 1, 4, 1.0, original, original}}));
}

TEST_F(ScanTest, BothScansStoreFullAlignmentTwiceEach) {
    scanBoth({motifOfText(1, "AAACC"), motifOfText(2, "AAACC")}, 0.9);
    EXPECT_EQ(recordsOf(1), (std::vector<WalkedRecord>{{1, 2, "Forward", "Y", 1, 5, 1.0, original, original},
                                                       {1, 2, "Backward", "Y", 1, 5, 1.0, original, original}}));
    EXPECT_EQ(recordsOf(2), (std::vector<WalkedRecord>{{2, 1, "Forward", "", 1, 5, 1.0, original, original},
                                                       {2, 1, "Backward", "", 1, 5, 1.0, original, original}}));
}

TEST_F(ScanTest, PalindromeIsLabelledBothOriginal) {
    const data palindrome = motifOfText(1, "CACGTG");
    ASSERT_EQ(palindrome.matrix, palindrome.revCompMatrix);
    scanForward({palindrome, motifOfText(2, "CACGTG")}, 0.9);
    EXPECT_EQ(recordsOf(1), (std::vector<WalkedRecord>{{1, 2, "Forward", "Y", 1, 6, 1.0, original, original}}));
}

TEST_F(ScanTest, KeepsScoreEqualToCutoff) {
    // Cells 0.5, 0.5, 1, 1 in each column.
    scanForward({motifOfText(1, "AAAA"), motifOfText(2, "MMMM")}, 0.75);
    ASSERT_EQ(recordsOf(1).size(), 1U);
    EXPECT_EQ(recordsOf(1)[0].similarityScore, 0.75);
}

TEST_F(ScanTest, DropsScoreBelowCutoff) {
    scanForward({motifOfText(1, "AAAA"), motifOfText(2, "MMMM")}, 0.8);
    EXPECT_TRUE(recordsOf(1).empty());
    EXPECT_TRUE(recordsOf(2).empty());
}

TEST_F(ScanTest, LongerMotifAlongTheShorterOne) {
    // i has six columns, j has four. In the first region i slides along j and has one offset. In the second, j slides
    // along i and has three offsets. The reverse complement of CCCC is GGGG.
    scanBoth({motifOfText(1, "AACCCC"), motifOfText(2, "CCCC")}, 0.9);
    // Forward, first region, offset 0: AACC against CCCC scores 0.75, below the cutoff. But GGGGTT, the reverse
    // complement of i, agrees fully with GGGG, the reverse complement of j.
    EXPECT_EQ(recordsOf(1)[0], (WalkedRecord{1, 2, "Forward", "Y", 1, 4, 1.0, reversed, reversed}));
    EXPECT_EQ(recordsOf(1)[1], (WalkedRecord{1, 2, "Backward", "Y", 1, 4, 1.0, original, original}));
    EXPECT_EQ(recordsOf(1).size(), 2U);
    EXPECT_EQ(recordsOf(2), (std::vector<WalkedRecord>{{2, 1, "Forward", "", 1, 4, 1.0, reversed, reversed},
                                                       {2, 1, "Forward", "", 3, 4, 1.0, original, original},
                                                       {2, 1, "Backward", "", 1, 4, 1.0, original, original},
                                                       {2, 1, "Backward", "", 3, 4, 1.0, reversed, reversed}}));
}

TEST_F(ScanTest, FormatsOfSecondRegionAreCrossed) {
    // Both records give "reverse complement" as the second format, because motif 2 is the second motif of the label. In
    // the record that stores motif 2 first, this is then the format of the wrong motif.
    data second = motifOfText(2, "CCCC");
    second.revCompMatrix = Matrix(4, Column{1, 0, 0, 0});
    data first = motifOfText(1, "AAAA");
    first.revCompMatrix = Matrix(4, Column{0, 0, 0.5, 0.5});
    scanForward({first, second}, 0.9);
    EXPECT_EQ(recordsOf(1), (std::vector<WalkedRecord>{{1, 2, "Forward", "Y", 1, 4, 1.0, original, reversed}}));
    EXPECT_EQ(recordsOf(2), (std::vector<WalkedRecord>{{2, 1, "Forward", "", 1, 4, 1.0, original, reversed}}));
}

TEST_F(ScanTest, BackwardPositionCountsFromTheEnd) {
    // i = AAAA lies within j = CCAAAACCC, at forward offset 2 and three columns before the end. The second region, with
    // four columns, has only offset 0.
    scanBoth({motifOfText(1, "AAAA"), motifOfText(2, "CCAAAACCC")}, 0.9);
    EXPECT_EQ(recordsOf(1), (std::vector<WalkedRecord>{{1, 2, "Forward", "Y", 3, 4, 1.0, original, original},
                                                       {1, 2, "Forward", "Y", 4, 4, 1.0, reversed, reversed},
                                                       {1, 2, "Backward", "Y", 3, 4, 1.0, reversed, reversed},
                                                       {1, 2, "Backward", "Y", 4, 4, 1.0, original, original}}));
    EXPECT_TRUE(recordsOf(2).empty());
}

TEST_F(ScanTest, ListsAreGroupedInTheOrderOfPairs) {
    scanForward({motifOfText(1, "AAAA"), motifOfText(2, "AAAA"), motifOfText(3, "AAAA")}, 0.9);
    ASSERT_EQ(recordsOf(2).size(), 2U);
    EXPECT_EQ(recordsOf(2)[0].matrixID2, 1);
    EXPECT_EQ(recordsOf(2)[0].primaryFlag, "");
    EXPECT_EQ(recordsOf(2)[1].matrixID2, 3);
    EXPECT_EQ(recordsOf(2)[1].primaryFlag, "Y");
}

TEST_F(ScanTest, BackwardScanAddsItsRecords) {
    scanForward({motifOfText(1, "AAAA"), motifOfText(2, "AAAA")}, 0.9);
    EXPECT_EQ(recordsOf(1).size(), 1U);
    backwardScan();
    ASSERT_EQ(recordsOf(1).size(), 2U);
    EXPECT_EQ(recordsOf(1)[1].direction, "Backward");
}

TEST_F(ScanTest, RecordsAreScoredBehindTheirBounds) {
    scanBoth({motifOfText(1, "AAAAA"), motifOfText(2, "AAAAA")}, 0.9);
    getMaxScores();
    ASSERT_EQ(maxScoresList.size(), 2U);
    EXPECT_EQ(maxScoresList[0].matrixID, 0);
    const auto scores = [] {
        std::set<double> found;
        for (const auto& list : testing::allRecords(inputRecords(DatasetsCombinedScoreLists), 2)) {
            for (const dataCombinedScore& record : list) found.insert(record.combinedScore);
        }
        return found;
    };
    EXPECT_EQ(scores(), (std::set<double>{0}));
    calculateSumScoresCompare();
    // Five columns of five, and four of five.
    EXPECT_EQ(scores(), (std::set<double>{0, 0.5}));
    for (const int id : {1, 2}) {
        const maxScores& bounds = maxScoresList[static_cast<std::size_t>(id - 1)];
        EXPECT_EQ(bounds.matrixID, id);
        EXPECT_EQ(bounds.maxScore, 1.0);
        EXPECT_EQ(bounds.maxOverlap, 5);
        EXPECT_EQ(bounds.halfOverlapPlus2, 4);
    }
}

TEST_F(ScanTest, ColumnsThatAreNoNumbersDropTheirAlignments) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Matrix gap(5, Column{1, 0, 0, 0});
    gap[4] = {nan, nan, nan, nan};
    scanForward({motifOfText(1, "AAAAA"), motifOfMatrix(2, gap)}, 0.5);
    // In the first region, offsets 0 and 1 both face the gap. In the second region, offset 1 leaves it out.
    EXPECT_TRUE(recordsOf(1).empty());
    ASSERT_EQ(recordsOf(2).size(), 1U);
    EXPECT_EQ(recordsOf(2)[0].position, 2);
    EXPECT_EQ(recordsOf(2)[0].similarityScore, 1.0);
}

}  // namespace
}  // namespace varnolix
