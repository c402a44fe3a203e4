#include "scan/region_rule.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plain/plain_scan.h"

namespace varnolix {
namespace {

using plain::Region;
using plain::Walk;

constexpr int least = 4;

std::vector<ScoredShift> allShifts(PairLengths lengths, Walks walks = bothWalks) {
    std::vector<ScoredShift> shifts;
    for (int shift = leastShift(lengths, least); shift <= mostShift(lengths, least); ++shift) {
        ScoredShift kept{};
        kept.shift = shift;
        kept.walks = walks;
        shifts.push_back(kept);
    }
    return shifts;
}

/// Lengths of the three cases, with all that lie near to each other and the least.
std::vector<PairLengths> allLengths() {
    std::vector<PairLengths> lengths;
    for (int left = 4; left <= 11; ++left) {
        for (int right = 4; right <= 11; ++right) lengths.push_back({left, right});
    }
    lengths.push_back({4, 40});
    lengths.push_back({40, 4});
    lengths.push_back({40, 40});
    return lengths;
}

struct RegionCase {
    Direction direction;
    Sliding sliding;
    const char* name;
};

const RegionCase regions[] = {{Direction::forward, Sliding::left, "forward, first"},
                              {Direction::forward, Sliding::right, "forward, second"},
                              {Direction::backward, Sliding::left, "backward, first"},
                              {Direction::backward, Sliding::right, "backward, second"}};

TEST(RegionRule, RegionsVisitTheOffsetsOfTheWalk) {
    for (const RegionCase& each : regions) {
        for (const PairLengths& lengths : allLengths()) {
            SCOPED_TRACE(std::string(each.name) + " " + std::to_string(lengths.left) + " " +
                         std::to_string(lengths.right));
            // The left motif is the outer one, i.
            const auto left = static_cast<std::size_t>(lengths.left);
            const auto right = static_cast<std::size_t>(lengths.right);
            const std::vector<Walk> expected = plain::walksOf(
                each.direction, each.sliding == Sliding::left ? Region::first : Region::second, left, right, least);
            std::size_t visited = 0;
            forEachOffset(each.direction, each.sliding, lengths, allShifts(lengths),
                          [&](const ScoredShift& kept, int offset) {
                              ASSERT_LT(visited, expected.size());
                              const Walk& walk = expected[visited++];
                              EXPECT_EQ(offset, static_cast<int>(walk.offset));
                              EXPECT_EQ(overlapAt(lengths, kept.shift), static_cast<int>(walk.columns));
                              for (std::size_t k = 0; k < walk.columns; ++k) {
                                  const std::size_t i = walk.iStart + k * walk.step;
                                  const std::size_t j = walk.jStart + k * walk.step;
                                  EXPECT_TRUE(i < left && j < right);
                                  EXPECT_EQ(static_cast<int>(j) - static_cast<int>(i), kept.shift);
                              }
                          });
            EXPECT_EQ(visited, expected.size());
        }
    }
}

/// Number of columns compared, by the tables of the six regions.
int columnsOfTable(bool isForward, Region region, int lengthI, int lengthJ, int p) {
    static_cast<void>(isForward);  // both scans have the same table
    if (lengthI == lengthJ) return lengthI - p;
    if (lengthI > lengthJ) {
        if (region == Region::first) return lengthJ - p;
        return p > lengthI - lengthJ ? lengthI - p : lengthJ;
    }
    if (region == Region::first) return p > lengthJ - lengthI ? lengthJ - p : lengthI;
    return lengthI - p;
}

TEST(RegionRule, ColumnsComparedAreThoseOfTheSixRegions) {
    for (const RegionCase& each : regions) {
        const bool isForward = each.direction == Direction::forward;
        const Region region = each.sliding == Sliding::left ? Region::first : Region::second;
        for (const PairLengths& lengths : allLengths()) {
            int lastOffset = -1;
            forEachOffset(each.direction, each.sliding, lengths, allShifts(lengths),
                          [&](const ScoredShift& kept, int offset) {
                              EXPECT_EQ(overlapAt(lengths, kept.shift),
                                        columnsOfTable(isForward, region, lengths.left, lengths.right, offset))
                                  << each.name << " " << lengths.left << " " << lengths.right << " at " << offset;
                              lastOffset = offset;
                          });
            const int fixedLength = region == Region::first ? lengths.right : lengths.left;
            EXPECT_EQ(lastOffset, fixedLength - least);
        }
    }
}

TEST(RegionRule, OffsetZeroBelongsToBothRegions) {
    const PairLengths lengths{6, 9};
    EXPECT_EQ(offsetAt(Direction::forward, Sliding::left, lengths, 0), 0);
    EXPECT_EQ(offsetAt(Direction::forward, Sliding::right, lengths, 0), 0);
    EXPECT_EQ(offsetAt(Direction::backward, Sliding::left, lengths, 3), 0);
    EXPECT_EQ(offsetAt(Direction::backward, Sliding::right, lengths, 3), 0);
}

TEST(RegionRule, ShorterMotifLiesWhollyInTheLongerOne) {
    // i of 9 columns, j of 6: in the second region j ends on the last column of i at offset 3.
    const PairLengths lengths{9, 6};
    EXPECT_EQ(overlapAt(lengths, -3), 6);
    EXPECT_EQ(overlapAt(lengths, -4), 5);
    EXPECT_EQ(offsetAt(Direction::forward, Sliding::right, lengths, -3), 3);
}

TEST(RegionRule, ShiftsOfOneScanAloneGiveRecordsOfThatScan) {
    const PairLengths lengths{5, 5};
    const auto count = [&](Direction direction, Walks walks) {
        int visited = 0;
        forEachOffset(direction, Sliding::left, lengths, allShifts(lengths, walks),
                      [&](const ScoredShift&, int) { ++visited; });
        return visited;
    };
    EXPECT_EQ(count(Direction::forward, forwardWalk), 2);
    EXPECT_EQ(count(Direction::backward, forwardWalk), 0);
    EXPECT_EQ(count(Direction::forward, backwardWalk), 0);
    EXPECT_EQ(count(Direction::backward, backwardWalk), 2);
}

TEST(RegionRule, FormatsFollowTheLabel) {
    struct Case {
        Orientation orientation;
        MatchingFormat first;
        MatchingFormat second;
    };
    constexpr MatchingFormat original = MatchingFormat::originalMotif;
    constexpr MatchingFormat reversed = MatchingFormat::reverseComplement;
    for (const Case& each : {Case{Orientation::bothOriginal, original, original},
                             {Orientation::secondReversed, original, reversed},
                             {Orientation::firstReversed, reversed, original},
                             {Orientation::bothReversed, reversed, reversed}}) {
        EXPECT_EQ(firstFormat(each.orientation), each.first);
        EXPECT_EQ(secondFormat(each.orientation), each.second);
    }
}

TEST(RegionRule, RecordCountsPositionsFromOne) {
    ScoredShift kept{};
    kept.score = 0.875;
    kept.shift = 2;
    kept.orientation = Orientation::secondReversed;
    const dataCombinedScore record =
        makeRecord(kept, 2, Direction::backward, PrimaryFlag::yes, {7, 3}, {.left = 6, .right = 7});
    EXPECT_EQ(record.matrixID1, 7);
    EXPECT_EQ(record.matrixID2, 3);
    EXPECT_EQ(record.position, 3U);
    EXPECT_EQ(record.overlap, 5U);
    EXPECT_EQ(record.direction, Direction::backward);
    EXPECT_EQ(record.primaryFlag, PrimaryFlag::yes);
    EXPECT_EQ(record.matchingFormat1, MatchingFormat::originalMotif);
    EXPECT_EQ(record.matchingFormat2, MatchingFormat::reverseComplement);
    EXPECT_EQ(record.similarityScore, 0.875);
}

}  // namespace
}  // namespace varnolix
