#include "run/record_fields.h"

#include <gtest/gtest.h>

namespace varnolix {
namespace {

dataCombinedScore pairRecord(PrimaryFlag flag) {
    dataCombinedScore record{};
    record.matrixID1 = 3;
    record.matrixID2 = 8;
    record.primaryFlag = flag;
    return record;
}

TEST(RecordFields, PrintDirectionsAndFormats) {
    EXPECT_STREQ(directionText(Direction::forward), "Forward");
    EXPECT_STREQ(directionText(Direction::backward), "Backward");
    EXPECT_STREQ(formatText(MatchingFormat::originalMotif), "Original Motif");
    EXPECT_STREQ(formatText(MatchingFormat::reverseComplement), "Reverse Complement");
}

TEST(RecordFields, OuterMotifIsStoredFirstInPrimaryRecords) {
    EXPECT_EQ(outerMatrixID(pairRecord(PrimaryFlag::yes)), 3);
    EXPECT_EQ(innerMatrixID(pairRecord(PrimaryFlag::yes)), 8);
}

TEST(RecordFields, OuterMotifIsStoredSecondInOtherRecords) {
    EXPECT_EQ(outerMatrixID(pairRecord(PrimaryFlag::empty)), 8);
    EXPECT_EQ(innerMatrixID(pairRecord(PrimaryFlag::empty)), 3);
}

TEST(RecordFields, MotifStandsAtItsIdLessOne) {
    std::vector<data> motifs(3);
    motifs[0].motifName = "first";
    motifs[2].motifName = "third";
    EXPECT_EQ(motifOf(motifs, 1).motifName, "first");
    EXPECT_EQ(motifOf(motifs, 3).motifName, "third");
}

TEST(RecordFields, RecordHoldsItsLargestValues) {
    dataCombinedScore record{};
    record.position = (1U << 30U) - 1U;
    record.overlap = (1U << 30U) - 1U;
    EXPECT_EQ(record.position, 1073741823U);
    EXPECT_EQ(record.overlap, 1073741823U);
    EXPECT_EQ(record.direction, Direction::forward);
    EXPECT_EQ(record.primaryFlag, PrimaryFlag::empty);
    EXPECT_EQ(record.matchingFormat1, MatchingFormat::originalMotif);
    EXPECT_EQ(record.matchingFormat2, MatchingFormat::originalMotif);
}

}  // namespace
}  // namespace varnolix
