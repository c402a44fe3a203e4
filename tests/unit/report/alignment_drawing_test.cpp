#include "report/alignment_drawing.h"

#include <gtest/gtest.h>

#include "report/matched_motif.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

constexpr MatchingFormat original = MatchingFormat::originalMotif;
constexpr MatchingFormat reversed = MatchingFormat::reverseComplement;
constexpr Direction forward = Direction::forward;
constexpr Direction backward = Direction::backward;

/// A motif of which only the two consensus strings matter.
data texts(const char* consensus, const char* revCompConsensus) {
    data motif;
    motif.consensus = consensus;
    motif.revCompConsensus = revCompConsensus;
    return motif;
}

const data eight = texts("BBBBBBBB", "bbbbbbbb");
const data other8 = texts("CCCCCCCC", "cccccccc");
const data six = texts("AAAAAA", "aaaaaa");

struct Case {
    const char* name;
    const data& other;
    MatchingFormat otherFormat;
    const data& own;
    MatchingFormat firstFormat;
    Direction direction;
    int position;
    int overlapColumns;
    const char* otherLine;
    const char* ownLine;
};

void expectLines(std::initializer_list<Case> cases) {
    for (const Case& each : cases) {
        const AlignmentLines lines = drawAlignment(each.other, each.otherFormat, each.own, each.firstFormat,
                                                   each.direction, each.position, each.overlapColumns);
        EXPECT_EQ(lines.other, each.otherLine) << each.name;
        EXPECT_EQ(lines.own, each.ownLine) << each.name;
    }
}

TEST(AlignmentDrawing, FullOverlapHasNoHyphens) {
    expectLines({{"forward", eight, original, other8, original, forward, 1, 8, "BBBBBBBB", "CCCCCCCC"},
                 {"backward", eight, original, other8, original, backward, 1, 8, "BBBBBBBB", "CCCCCCCC"}});
}

TEST(AlignmentDrawing, EightAndSixOverlapByThree) {
    expectLines({{"forward", eight, original, six, original, forward, 6, 3, "BBBBBBBB---", "-----AAAAAA"},
                 {"backward", eight, original, six, original, backward, 6, 3, "---BBBBBBBB", "AAAAAA-----"}});
}

TEST(AlignmentDrawing, PositionOneDrawsBothFromTheEdge) {
    expectLines({{"forward", eight, original, six, original, forward, 1, 6, "BBBBBBBB", "AAAAAA--"},
                 {"backward", eight, original, six, original, backward, 1, 6, "BBBBBBBB", "--AAAAAA"}});
}

TEST(AlignmentDrawing, PositionBelowOneHasNoOffset) {
    expectLines({{"zero", eight, original, six, original, forward, 0, 6, "BBBBBBBB", "AAAAAA--"}});
}

TEST(AlignmentDrawing, OwnMotifWithinTheOtherIsPaddedOnBothSides) {
    expectLines({{"forward", eight, original, six, original, forward, 2, 6, "BBBBBBBB", "-AAAAAA-"},
                 {"forward, at the end", eight, original, six, original, forward, 3, 6, "BBBBBBBB", "--AAAAAA"},
                 {"backward", eight, original, six, original, backward, 2, 6, "BBBBBBBB", "-AAAAAA-"},
                 {"backward, at the start", eight, original, six, original, backward, 3, 6, "BBBBBBBB", "AAAAAA--"}});
}

TEST(AlignmentDrawing, NothingIsClipped) {
    expectLines({{"offset past the end", eight, original, six, original, forward, 5, 6, "BBBBBBBB", "----AAAAAA"},
                 {"backward", eight, original, six, original, backward, 5, 6, "BBBBBBBB", "AAAAAA----"},
                 {"overlap above both lengths", six, original, six, original, forward, 1, 9, "AAAAAA", "AAAAAA"}});
}

TEST(AlignmentDrawing, FormatsChooseTheTexts) {
    expectLines({{"both original", eight, original, other8, original, forward, 1, 8, "BBBBBBBB", "CCCCCCCC"},
                 {"other reversed", eight, reversed, other8, original, forward, 1, 8, "bbbbbbbb", "CCCCCCCC"},
                 {"own reversed", eight, original, other8, reversed, forward, 1, 8, "BBBBBBBB", "cccccccc"},
                 {"both reversed", eight, reversed, other8, reversed, backward, 1, 8, "bbbbbbbb", "cccccccc"}});
}

TEST(AlignmentDrawing, LengthsAreThoseOfTheForwardTexts) {
    // On one strand, a text may be shorter than the motif.
    const data uneven = texts("AAAA", "aa");
    expectLines({{"own", eight, original, uneven, reversed, forward, 2, 4, "BBBBBBBB", "-aa---"},
                 {"other", uneven, reversed, eight, original, backward, 1, 4, "----aa", "BBBBBBBB"}});
}

class MatchedMotifTest : public testing::RunTest {
  protected:
    MatchedMotifTest() {
        Datasets = {eight, six};
        record.matrixID1 = 1;
        record.matrixID2 = 2;
        record.position = 1;
        record.overlap = 6;
        record.direction = forward;
    }

    dataCombinedScore record{};
};

TEST_F(MatchedMotifTest, MatchOfTheFirstMotifIsTheSecond) {
    record.matchingFormat1 = original;
    record.matchingFormat2 = reversed;
    const MatchedMotif match = matchedMotif(record, 1, Datasets, Datasets);
    EXPECT_EQ(&match.motif, &Datasets[1]);
    EXPECT_EQ(match.lines.other, "aaaaaa--");
    EXPECT_EQ(match.lines.own, "BBBBBBBB");
}

TEST_F(MatchedMotifTest, OwnMotifIsDrawnByTheFirstFormatAlsoAsSecondMotif) {
    record.matchingFormat1 = original;
    record.matchingFormat2 = reversed;
    const MatchedMotif match = matchedMotif(record, 2, Datasets, Datasets);
    EXPECT_EQ(&match.motif, &Datasets[0]);
    EXPECT_EQ(match.lines.other, "BBBBBBBB");
    EXPECT_EQ(match.lines.own, "AAAAAA--");
    record.matchingFormat1 = reversed;
    record.matchingFormat2 = original;
    EXPECT_EQ(matchedMotif(record, 2, Datasets, Datasets).lines.other, "bbbbbbbb");
    EXPECT_EQ(matchedMotif(record, 2, Datasets, Datasets).lines.own, "aaaaaa--");
}

TEST_F(MatchedMotifTest, AgainstACollectionTheMatchComesFromThere) {
    const std::vector<data> collection = {six, other8};
    record.overlap = 8;
    const MatchedMotif match = matchedMotif(record, 1, Datasets, collection);
    EXPECT_EQ(match.lines.other, "CCCCCCCC");
    EXPECT_EQ(match.lines.own, "BBBBBBBB");
}

}  // namespace
}  // namespace varnolix
