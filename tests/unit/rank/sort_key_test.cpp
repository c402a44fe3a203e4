#include "rank/sort_key.h"

#include <gtest/gtest.h>

namespace varnolix {
namespace {

SortKey keyAt(Direction direction, std::uint32_t partner, Sliding sliding, std::uint32_t alignment) {
    return {0.5, {direction, partner, sliding, alignment}};
}

TEST(SortKey, LowerScoreStandsFirst) {
    const RecordPlace first{Direction::forward, 0, Sliding::left, 0};
    const RecordPlace last{Direction::backward, 9, Sliding::right, 0};
    EXPECT_TRUE(SortKey(0.25, last) < SortKey(0.5, first));
    EXPECT_FALSE(SortKey(0.5, first) < SortKey(0.25, last));
    EXPECT_FALSE(SortKey(0.5, first) < SortKey(0.5, first));
}

TEST(SortKey, EqualScoresAreOrderedAsTheScansListThem) {
    // The forward records of all partners come first, then the backward ones. For each partner, the records in which
    // the motif itself slides come first, then the others, each in order of ascending offsets. Alignments are numbered
    // by shift. Where the partner slides forward, or the motif slides backward, offsets decrease as the shift grows.
    const std::vector<SortKey> inOrder = {
        keyAt(Direction::forward, 2, Sliding::left, 10),   keyAt(Direction::forward, 2, Sliding::left, 11),
        keyAt(Direction::forward, 2, Sliding::right, 11),  keyAt(Direction::forward, 2, Sliding::right, 10),
        keyAt(Direction::forward, 3, Sliding::left, 12),   keyAt(Direction::backward, 2, Sliding::left, 11),
        keyAt(Direction::backward, 2, Sliding::left, 10),  keyAt(Direction::backward, 2, Sliding::right, 10),
        keyAt(Direction::backward, 2, Sliding::right, 11), keyAt(Direction::backward, 3, Sliding::left, 12),
    };
    for (std::size_t left = 0; left < inOrder.size(); ++left) {
        for (std::size_t right = 0; right < inOrder.size(); ++right) {
            EXPECT_EQ(inOrder[left] < inOrder[right], left < right) << left << " and " << right;
        }
    }
}

TEST(SortKey, ZerosOfBothSignsAreEqual) {
    const RecordPlace first{Direction::forward, 0, Sliding::left, 0};
    const RecordPlace second{Direction::forward, 0, Sliding::left, 1};
    EXPECT_TRUE(SortKey(0.0, first) < SortKey(-0.0, second));
    EXPECT_FALSE(SortKey(-0.0, second) < SortKey(0.0, first));
}

TEST(SortKey, GivesItsPlaceBack) {
    constexpr std::uint32_t mostPartner = (1U << SortKey::partnerBits) - 1;
    constexpr std::uint32_t mostAlignment = (1U << alignmentBits) - 1;
    for (const Direction direction : {Direction::forward, Direction::backward}) {
        for (const Sliding sliding : {Sliding::left, Sliding::right}) {
            for (const std::uint32_t partner : {0U, 77U, mostPartner}) {
                for (const std::uint32_t alignment : {0U, 5U, mostAlignment}) {
                    const RecordPlace place{direction, partner, sliding, alignment};
                    const SortKey key(0.125, place);
                    EXPECT_EQ(key.place(), place);
                    EXPECT_EQ(key.partner(), partner);
                    EXPECT_EQ(key.score(), 0.125);
                }
            }
        }
    }
}

}  // namespace
}  // namespace varnolix
