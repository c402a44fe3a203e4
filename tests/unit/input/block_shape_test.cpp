#include "input/block_shape.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "plain/plain_blocks.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using Lines = std::vector<std::string_view>;

BlockOutcome outcomeOf(BlockClassifier& classifier, const Lines& lines) {
    BlockShape shape;
    for (const std::string_view line : lines) shape.addRow(splitTokens(line));
    return classifier.classify(shape);
}

/// The outcome for the first block of a file.
BlockOutcome outcomeOf(const Lines& lines) {
    BlockClassifier classifier;
    return outcomeOf(classifier, lines);
}

const Lines loneName = {">name"};
const Lines brokenMEME = {"---", "title", "---", "letter-probability matrix", "0.1 0.2"};

/// Whether the previous block has set the mark that makes a lone name line wait.
bool setsHeld(BlockClassifier& classifier) {
    return outcomeOf(classifier, loneName) == BlockOutcome::hold;
}

/// Whether one of the marks of the token test is set.
bool setsNumberSeen(BlockClassifier& classifier) {
    return outcomeOf(classifier, brokenMEME) == BlockOutcome::meme;
}

// Empty blocks.

TEST(BlockShape, EmptyBlockIsNothing) {
    EXPECT_EQ(outcomeOf({}), BlockOutcome::nothing);
}

// TRANSFAC.

TEST(BlockShape, TwoTokensAndSixRowsAreTransfac) {
    EXPECT_EQ(outcomeOf({"DE name", "1 1 2 3 4", "x", "y", "2 1 2 3 4 A", "XX"}), BlockOutcome::transfac);
    EXPECT_EQ(outcomeOf({"0.1 0.2", "0.1 0.2", "0.1 0.2", "0.1 0.2", "0.1 0.2", "0.1 0.2"}), BlockOutcome::transfac);
    EXPECT_EQ(outcomeOf({"DE name", "a", "b", "c", "d", "e", "f", "g"}), BlockOutcome::transfac);
}

TEST(BlockShape, FiveRowsAreNotTransfac) {
    EXPECT_EQ(outcomeOf({"DE name", "1 1 2 3 4", "2 1 2 3 4", "3 1 2 3 4", "XX"}), BlockOutcome::hold);
}

// Jaspar.

TEST(BlockShape, NameAndFourBaseRowsAreJaspar) {
    EXPECT_EQ(outcomeOf({">MA0004.1 Arnt", "A 1 2", "C 1 2", "G 1 2", "T 1 2"}), BlockOutcome::jaspar);
    EXPECT_EQ(outcomeOf({">MA0004.1", "A [1 2]", "C [ 1 2 ]", "G", "T"}), BlockOutcome::jaspar);
}

TEST(BlockShape, JasparBasesMustStandInOrderAndAlone) {
    for (const Lines& lines : {Lines{">m", "A 1", "G 1", "C 1", "T 1"}, Lines{">m", "a 1", "c 1", "g 1", "t 1"},
                               Lines{">m", "A[ 1", "C[ 1", "G[ 1", "T[ 1"}, Lines{">m n o", "A 1", "C 1", "G 1", "T 1"},
                               Lines{">m", "A 1", "C 1", "G 1", "T 1", "X 1"}, Lines{">m", "A 1", "C 1", "G 1"}}) {
        EXPECT_NE(outcomeOf(lines), BlockOutcome::jaspar);
    }
}

// Several tokens in the first row: the token test.

TEST(BlockShape, WordsAreHeld) {
    EXPECT_EQ(outcomeOf({"some words here", "and more of them"}), BlockOutcome::hold);
    EXPECT_EQ(outcomeOf({"1.5 x"}), BlockOutcome::hold);
    EXPECT_EQ(outcomeOf({"-0.1 0.2 0.3 0.4"}), BlockOutcome::hold);
    EXPECT_EQ(outcomeOf({"0.1 0.2 0.3 0.4", "0.1 0.2 0.3 1e-1"}), BlockOutcome::hold);
}

TEST(BlockShape, HoldingWordsKeepsTheMark) {
    BlockClassifier classifier;
    outcomeOf(classifier, {"0.1 0.2", "0.1 0.2", "0.1 0.2", "0.1 0.2"});  // sets the mark
    EXPECT_EQ(outcomeOf(classifier, {"some words"}), BlockOutcome::hold);
    EXPECT_TRUE(setsHeld(classifier));
    BlockClassifier another;
    EXPECT_EQ(outcomeOf(another, {"some words"}), BlockOutcome::hold);
    EXPECT_FALSE(setsHeld(another));
}

TEST(BlockShape, ScanStopsAtTheFirstWholeNumber) {
    // What follows is not looked at, whether it is a number or not.
    EXPECT_EQ(outcomeOf({"1 x y z", "a b c d", "e f g h", "i j k l", "m n o p"}), BlockOutcome::matrixV);
    EXPECT_EQ(outcomeOf({"0.5 1 x"}), BlockOutcome::matrixV);
    EXPECT_EQ(outcomeOf({"0.5 x 1"}), BlockOutcome::hold);
}

TEST(BlockShape, SeveralPointsStopTheScanAsANumber) {
    EXPECT_EQ(outcomeOf({"1.2.3 words"}), BlockOutcome::matrixV);
}

TEST(BlockShape, TokenTestSetsItsMarks) {
    struct Case {
        Lines lines;
        bool numberSeen;
    };
    for (const Case& each : {Case{{"0.1 0.2"}, true}, {{"1 2"}, true}, {{"x y"}, false}, {{"0.1 x"}, false}}) {
        BlockClassifier classifier;
        outcomeOf(classifier, {"1 2"});
        outcomeOf(classifier, each.lines);
        EXPECT_EQ(setsNumberSeen(classifier), each.numberSeen) << *each.lines.begin();
    }
}

// Horizontal matrices.

TEST(BlockShape, FourRowsOfNumbersAreHorizontal) {
    EXPECT_EQ(outcomeOf({"0.1 0.2 0.3 0.4", "0.1 0.2 0.3 0.4", "0.1 0.2 0.3 0.4", "0.1 0.2 0.3 0.4"}),
              BlockOutcome::matrixH);
    EXPECT_EQ(outcomeOf({"1 0", "0 1", "0 0", "0 0"}), BlockOutcome::matrixH);
    EXPECT_EQ(outcomeOf({"0.1 0.2 0.3", "0.1 0.2 0.3", "0.1 0.2 0.3", "0.1 0.2 0.3"}), BlockOutcome::matrixH);
}

TEST(BlockShape, HorizontalSetsTheMark) {
    BlockClassifier classifier;
    outcomeOf(classifier, {"1 0", "0 1", "0 0", "0 0"});
    EXPECT_TRUE(setsHeld(classifier));
}

TEST(BlockShape, FourRowsOfDifferentLengthsAreHeldWithoutMark) {
    for (const Lines& lines : {Lines{"1 0", "0 1 1", "0 0", "0 0"}, Lines{"1 0 0", "0 1", "0 0", "0 0"},
                               Lines{"0.1 0.2", "0.1 0.2", "0.1 0.2", "0.1"}}) {
        BlockClassifier classifier;
        outcomeOf(classifier, {"1 0", "0 1", "0 0", "0 0"});
        EXPECT_EQ(outcomeOf(classifier, lines), BlockOutcome::hold);
        EXPECT_FALSE(setsHeld(classifier));
    }
}

// Vertical matrices.

TEST(BlockShape, OtherCountsOfRowsAreVertical) {
    EXPECT_EQ(outcomeOf({"0.1 0.2 0.3 0.4"}), BlockOutcome::matrixV);
    EXPECT_EQ(
        outcomeOf({"0.1 0.2 0.3 0.4", "0.1 0.2 0.3 0.4", "0.1 0.2 0.3 0.4", "0.1 0.2 0.3 0.4", "0.1 0.2 0.3 0.4"}),
        BlockOutcome::matrixV);
    EXPECT_EQ(outcomeOf({"1 2 3 4 5", "1 2", "1"}), BlockOutcome::matrixV);
}

TEST(BlockShape, VerticalKeepsTheMark) {
    BlockClassifier classifier;
    outcomeOf(classifier, {"1 0", "0 1", "0 0", "0 0"});
    outcomeOf(classifier, {"1 2 3 4"});
    EXPECT_TRUE(setsHeld(classifier));
}

// Consensus strings.

TEST(BlockShape, NameAndLettersAreConsensus) {
    EXPECT_EQ(outcomeOf({">name", "ACGTRYKMSWBDHVN-"}), BlockOutcome::consensus);
    EXPECT_EQ(outcomeOf({">name", "-"}), BlockOutcome::consensus);
}

TEST(BlockShape, OtherPairsOfRowsAreHeld) {
    EXPECT_EQ(outcomeOf({">name", "ACGT ACGT"}), BlockOutcome::hold);
    EXPECT_EQ(outcomeOf({">name", "acgt"}), BlockOutcome::hold);
    EXPECT_EQ(outcomeOf({">name", "1"}), BlockOutcome::hold);
    EXPECT_EQ(outcomeOf({">name", "0.1 0.2 0.3 0.4"}), BlockOutcome::hold);
}

TEST(BlockShape, ConsensusKeepsTheMark) {
    BlockClassifier classifier;
    outcomeOf(classifier, {"1 0", "0 1", "0 0", "0 0"});
    outcomeOf(classifier, {">name", "ACGT"});
    outcomeOf(classifier, {">name", "acgt"});
    EXPECT_TRUE(setsHeld(classifier));
}

// MEME.

TEST(BlockShape, LetterProbabilityIsMEME) {
    EXPECT_EQ(outcomeOf({"---", "Motif 1 matrix", "---", "letter-probability matrix: w= 2", "0.1 0.2 0.3 0.4",
                         "0.25 0.25 0.25 0.25"}),
              BlockOutcome::meme);
}

TEST(BlockShape, MEMEWithoutShapeIsHeldUntilANumberWasSeen) {
    for (const Lines& lines : {brokenMEME, Lines{"---", "title", "---", "letter-probability"},
                               Lines{"---", "title", "---", "letter-probability", "0.1 0.2 0.3 x"},
                               Lines{"---", "title", "---", "letter-probability", "0.1 0.2 0.3 0.4", "---"}}) {
        EXPECT_EQ(outcomeOf(lines), BlockOutcome::hold);
    }
    BlockClassifier classifier;
    outcomeOf(classifier, {"0.1 0.2"});
    EXPECT_EQ(outcomeOf(classifier, brokenMEME), BlockOutcome::meme);
    EXPECT_EQ(outcomeOf(classifier, {"---", "title", "---", "letter-probability"}), BlockOutcome::meme);
}

TEST(BlockShape, MEMEWithWholeNumberIsRead) {
    EXPECT_EQ(outcomeOf({"---", "title", "---", "letter-probability", "1 0 0 0", "x x x x"}), BlockOutcome::meme);
}

TEST(BlockShape, MEMETestReplacesTheMarks) {
    BlockClassifier classifier;
    outcomeOf(classifier, {"0.1 0.2"});
    EXPECT_EQ(outcomeOf(classifier, {"---", "title", "---", "letter-probability", "0.1 0.2 0.3 x"}),
              BlockOutcome::hold);
    EXPECT_FALSE(setsNumberSeen(classifier));
}

TEST(BlockShape, LetterProbabilityMustBeAWholeToken) {
    EXPECT_EQ(outcomeOf({"---", "title", "---", "letter-probabilities", "0.1 0.2 0.3 0.4"}), BlockOutcome::hold);
    EXPECT_EQ(outcomeOf({"---", "title", "- -", "letter-probability", "0.1 0.2 0.3 0.4"}), BlockOutcome::hold);
    EXPECT_EQ(outcomeOf({"- -", "title", "---", "letter-probability", "0.1 0.2 0.3 0.4"}), BlockOutcome::hold);
}

// Lone names.

TEST(BlockShape, LoneNameIsAnEmptyRawBlock) {
    EXPECT_EQ(outcomeOf(loneName), BlockOutcome::rawPSSM);
}

TEST(BlockShape, LoneNameWaitsWhileTheMarkStands) {
    BlockClassifier classifier;
    outcomeOf(classifier, {"1 0", "0 1", "0 0", "0 0"});
    EXPECT_EQ(outcomeOf(classifier, loneName), BlockOutcome::hold);
    EXPECT_EQ(outcomeOf(classifier, loneName), BlockOutcome::hold);
}

// Aligned sequences.

TEST(BlockShape, SequencesOfOneLengthAreAnAlignment) {
    EXPECT_EQ(outcomeOf({">name", "ACGT", "ACGA", "ACG-"}), BlockOutcome::seqAlign);
    EXPECT_EQ(outcomeOf({">name", "A", "C"}), BlockOutcome::seqAlign);
}

TEST(BlockShape, SequencesHeldByTokenCountSetNoMark) {
    for (const Lines& lines : {Lines{">name", "ACGT", "ACGT ACGT"}, Lines{">name", "ACGT", "ACGT", "0.1 0.2"}}) {
        BlockClassifier classifier;
        outcomeOf(classifier, {"1 0", "0 1", "0 0", "0 0"});
        EXPECT_EQ(outcomeOf(classifier, lines), BlockOutcome::hold);
        EXPECT_FALSE(setsHeld(classifier));
    }
}

TEST(BlockShape, TokenCountIsTestedBeforeLengthAndLetters) {
    BlockClassifier classifier;
    EXPECT_EQ(outcomeOf(classifier, {">name", "ACGT", "AC", "acgt", "A C"}), BlockOutcome::hold);
    EXPECT_FALSE(setsHeld(classifier));
}

TEST(BlockShape, SequencesOfDifferentLengthSetTheMark) {
    BlockClassifier classifier;
    EXPECT_EQ(outcomeOf(classifier, {">name", "ACGT", "ACGTA"}), BlockOutcome::hold);
    EXPECT_TRUE(setsHeld(classifier));
}

TEST(BlockShape, OddLettersInSequencesSetTheMark) {
    for (const Lines& lines : {Lines{">name", "ACGN", "ACGT"}, Lines{">name", "ACGT", "acgt"}}) {
        BlockClassifier classifier;
        EXPECT_EQ(outcomeOf(classifier, lines), BlockOutcome::hold);
        EXPECT_TRUE(setsHeld(classifier));
    }
}

TEST(BlockShape, AlignmentClearsTheMark) {
    BlockClassifier classifier;
    outcomeOf(classifier, {"1 0", "0 1", "0 0", "0 0"});
    EXPECT_EQ(outcomeOf(classifier, {">name", "ACGT", "ACGA"}), BlockOutcome::seqAlign);
    EXPECT_FALSE(setsHeld(classifier));
}

// Raw matrices, and everything else.

TEST(BlockShape, NameAndRowsOfFourAreRaw) {
    EXPECT_EQ(outcomeOf({">name", "1 2 3 4", "1 2 3 4"}), BlockOutcome::rawPSSM);
    EXPECT_EQ(outcomeOf({">name", "any four tokens here", "0.1 0.2 0.3 0.4", "x y z 1"}), BlockOutcome::rawPSSM);
}

TEST(BlockShape, RawClearsTheMark) {
    BlockClassifier classifier;
    outcomeOf(classifier, {"1 0", "0 1", "0 0", "0 0"});
    outcomeOf(classifier, {">name", "1 2 3 4", "1 2 3 4"});
    EXPECT_FALSE(setsHeld(classifier));
}

TEST(BlockShape, OtherRowsAfterANameAreHeldWithoutMark) {
    for (const Lines& lines :
         {Lines{">name", "1 2 3 4", "1 2 3"}, Lines{">name", "1 2 3 4", "1 2 3 4", "1 2 3 4 5"},
          Lines{">name", "1 2", "1 2"}, Lines{">name", "1 2 3", "1 2 3 4"}, Lines{">name", "1 2 3 4 5", "1 2 3 4 5"}}) {
        BlockClassifier classifier;
        outcomeOf(classifier, {"1 0", "0 1", "0 0", "0 0"});
        EXPECT_EQ(outcomeOf(classifier, lines), BlockOutcome::hold);
        EXPECT_FALSE(setsHeld(classifier));
    }
}

// A shape that grows while it is held, and one that starts again.

TEST(BlockShape, HeldRowsJoinTheNextBlock) {
    BlockClassifier classifier;
    BlockShape shape;
    shape.addRow({">name"});
    shape.addRow({"acgt"});
    EXPECT_EQ(classifier.classify(shape), BlockOutcome::hold);
    shape.addRow({"ACGT"});
    EXPECT_EQ(classifier.classify(shape), BlockOutcome::hold);
    EXPECT_EQ(shape.rows().size(), 3U);
    shape.clear();
    EXPECT_TRUE(shape.rows().empty());
    shape.addRow({">name"});
    shape.addRow({"ACGT"});
    shape.addRow({"ACGA"});
    EXPECT_EQ(classifier.classify(shape), BlockOutcome::seqAlign);
}

/// Rows that fall often into one of the layouts, or just beside it.
class RandomRows {
  public:
    explicit RandomRows(unsigned seed) : engine_(seed) {}

    Row row() {
        constexpr std::size_t widths[] = {1, 1, 1, 2, 2, 3, 4, 4, 4, 4, 5};
        if (pick(6) == 0) width_ = widths[pick(std::size(widths))];
        if (pick(20) == 0) kind_ = pick(5);
        Row tokens(pick(25) == 0 ? 1 + pick(5) : width_);
        for (std::string_view& token : tokens) token = this->token();
        return tokens;
    }
    std::size_t pick(std::size_t below) { return engine_() % below; }

  private:
    std::string_view token() {
        constexpr std::string_view decimals[] = {"0.1", "0.25", ".5", "1.", "0.0"};
        constexpr std::string_view counts[] = {"1", "0", "12", "0.5", "3"};
        constexpr std::string_view sequences[] = {"ACGT", "AC-T", "TTTT", "ACGN", "ACGTA"};
        constexpr std::string_view bases[] = {"A", "C", "G", "T", "1"};
        constexpr std::string_view others[] = {">m1", "---", "letter-probability", "x", "1.2.3"};
        switch (pick(12) == 0 ? pick(5) : kind_) {
            case 0:
                return decimals[pick(5)];
            case 1:
                return counts[pick(5)];
            case 2:
                return sequences[pick(5)];
            case 3:
                return bases[pick(5)];
            default:
                return others[pick(5)];
        }
    }

    std::mt19937 engine_;
    std::size_t width_ = 4;
    std::size_t kind_ = 0;
};

TEST(BlockShape, AgreesWithTheStepsOnRandomBlocks) {
    constexpr int files = 3000;
    for (unsigned seed = 0; seed < files; ++seed) {
        RandomRows random(seed);
        BlockClassifier classifier;
        plain::Marks marks;
        BlockShape shape;
        for (int block = 0; block < 30; ++block) {
            const std::size_t rows = random.pick(8);
            for (std::size_t row = 0; row < rows; ++row) shape.addRow(random.row());
            const BlockOutcome expected = plain::classify(shape.rows(), marks);
            const BlockOutcome outcome = classifier.classify(shape);
            ASSERT_EQ(outcome, expected) << "seed " << seed << ", block " << block;
            if (outcome != BlockOutcome::hold || random.pick(3) != 0) shape.clear();
        }
    }
}

TEST(BlockShape, RandomBlocksReachEveryOutcome) {
    std::array<int, 10> counts{};
    for (unsigned seed = 0; seed < 3000; ++seed) {
        RandomRows random(seed);
        plain::Marks marks;
        for (int block = 0; block < 30; ++block) {
            Block rows;
            const std::size_t count = random.pick(8);
            while (rows.size() < count) rows.push_back(random.row());
            ++counts[static_cast<std::size_t>(plain::classify(rows, marks))];
        }
    }
    for (const int count : counts) EXPECT_GT(count, 0);
}

}  // namespace
}  // namespace varnolix
