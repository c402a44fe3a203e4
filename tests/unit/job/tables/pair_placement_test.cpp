#include "job/tables/pair_placement.h"

#include <gtest/gtest.h>

#include "scan/pair_scan.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

TEST(PairPlacement, UndoesTheRegionsAndTheCrossedFormats) {
    int count = 0;
    for (const PairLengths lengths : {PairLengths{4, 4}, PairLengths{9, 6}, PairLengths{5, 12}}) {
        for (int shift = leastShift(lengths, 4); shift <= mostShift(lengths, 4); ++shift) {
            for (const Orientation orientation : {Orientation::bothOriginal, Orientation::secondReversed,
                                                  Orientation::firstReversed, Orientation::bothReversed}) {
                for (const Direction direction : {Direction::forward, Direction::backward}) {
                    for (const Sliding sliding : {Sliding::left, Sliding::right}) {
                        const int offset = offsetAt(direction, sliding, lengths, shift);
                        if (offset < 0) continue;
                        // The left motif is the outer one: the orientation calls it the first.
                        ScoredShift kept{};
                        kept.shift = shift;
                        kept.orientation = orientation;
                        const bool isLeftStored = sliding == Sliding::left;
                        const dataCombinedScore record =
                            makeRecord(kept, offset, direction, isLeftStored ? PrimaryFlag::yes : PrimaryFlag::empty,
                                       isLeftStored ? StoredIDs{1, 2} : StoredIDs{2, 1}, lengths);
                        const PairLengths stored = isLeftStored ? lengths : PairLengths{lengths.right, lengths.left};
                        const PairPlacement ofLeft = placementOf(record, isLeftStored, stored);
                        const PairPlacement ofRight = placementOf(record, !isLeftStored, stored);
                        EXPECT_EQ(ofLeft.query, firstFormat(orientation));
                        EXPECT_EQ(ofLeft.target, secondFormat(orientation));
                        // Column k of the left motif faces column k + shift of the right one.
                        EXPECT_EQ(ofLeft.targetOffset, -shift);
                        EXPECT_EQ(ofRight.query, ofLeft.target);
                        EXPECT_EQ(ofRight.target, ofLeft.query);
                        EXPECT_EQ(ofRight.targetOffset, shift);
                        ++count;
                    }
                }
            }
        }
    }
    EXPECT_GT(count, 100);
}

TEST(PairPlacement, LettersStandBelowEachOther) {
    const auto lines = [](const char* query, const char* target, int offset) {
        const FramedLetters letters = framedLetters(query, target, offset);
        return letters.query + "/" + letters.target;
    };
    EXPECT_EQ(lines("ACGTA", "GTACC", 2), "ACGTA--/--GTACC");
    EXPECT_EQ(lines("GTACC", "ACGTA", -2), "--GTACC/ACGTA--");
    EXPECT_EQ(lines("ACGTAC", "CGTA", 1), "ACGTAC/-CGTA-");
    EXPECT_EQ(lines("CGTA", "ACGTAC", -1), "-CGTA-/ACGTAC");
    EXPECT_EQ(lines("ACGT", "ACGT", 0), "ACGT/ACGT");
}

TEST(PairPlacement, ColumnsWithoutAConsensusLetterGetOne) {
    // Two bases of half or more each: the consensus leaves the column out.
    const data motif = testing::motifOfMatrix(1, {{1, 0, 0, 0}, {0.8, 0, 0.7, 0}, {0, 0, 0, 1}});
    ASSERT_EQ(motif.consensus.size(), 2U);
    EXPECT_EQ(columnLetters(motif, MatchingFormat::originalMotif), "ANT");
    EXPECT_EQ(columnLetters(motif, MatchingFormat::reverseComplement).size(), 3U);
}

}  // namespace
}  // namespace varnolix::job
