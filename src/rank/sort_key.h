#pragma once

#include <cstdint>

#include "run/shared_records.h"
#include "run/system/run_limits.h"
#include "scan/region_rule.h"

// The order of a motif's records: by combinedScore, and records of equal combinedScore by their place in the list that
// the scans make. This order is total, so the result depends neither on the sorting algorithm or the library nor on the
// number of threads. Tested by sort_key_test.cpp.

namespace varnolix {

/// Which record of a motif a key belongs to.
struct RecordPlace {
    Direction direction;
    std::uint32_t partner;    ///< place of the other motif in its list
    Sliding sliding;          ///< left: the motif itself slides, and is stored first
    std::uint32_t alignment;  ///< place among the alignments of the motif, ordered by partner and shift

    bool operator==(const RecordPlace&) const = default;
};

/// The combinedScore of a record, and its place, packed into one number that grows in the order in which the scans list
/// records: forward records before backward ones, partners as they were read, the first region before the second, by
/// ascending offset.
class SortKey {
  public:
    static constexpr unsigned partnerBits = 28;
    static_assert(mostMotifs <= std::size_t{1} << partnerBits);

    SortKey() = default;
    /// Each part of the place must fit its bits.
    SortKey(double score, const RecordPlace& place) : score_(score), place_(packed(place)) {}

    double score() const { return score_; }
    std::uint32_t partner() const { return static_cast<std::uint32_t>(place_ >> partnerShift) & partnerField; }

    RecordPlace place() const {
        const Direction direction = place_ >> directionShift != 0 ? Direction::backward : Direction::forward;
        const Sliding sliding = (place_ >> slidingShift & 1U) != 0 ? Sliding::right : Sliding::left;
        return {direction, partner(), sliding,
                inOffsetOrder(direction, sliding, static_cast<std::uint32_t>(place_ & alignmentField))};
    }

    /// Whether the left record is more significant, or equally significant and listed earlier. There is no branch on
    /// the scores.
    friend bool operator<(const SortKey& left, const SortKey& right) {
        const int isLower = static_cast<int>(left.score_ < right.score_);
        const int isEqual = static_cast<int>(left.score_ == right.score_);
        const int isEarlier = static_cast<int>(left.place_ < right.place_);
        return (isLower | (isEqual & isEarlier)) != 0;
    }

  private:
    static constexpr unsigned slidingShift = alignmentBits;
    static constexpr unsigned partnerShift = slidingShift + 1;
    static constexpr unsigned directionShift = partnerShift + partnerBits;
    static constexpr std::uint32_t alignmentField = (std::uint32_t{1} << alignmentBits) - 1;
    static constexpr std::uint32_t partnerField = (std::uint32_t{1} << partnerBits) - 1;
    static_assert(directionShift < 64);

    /// Alignments are numbered by ascending shift. Where offsets descend as shifts ascend, the numbers are reversed.
    /// Reversing a number twice gives it back.
    static constexpr std::uint32_t inOffsetOrder(Direction direction, Sliding sliding, std::uint32_t alignment) {
        return offsetsAscend(direction, sliding) ? alignment : alignmentField - alignment;
    }

    static constexpr std::uint64_t packed(const RecordPlace& place) {
        const std::uint64_t direction = place.direction == Direction::backward ? 1 : 0;
        const std::uint64_t sliding = place.sliding == Sliding::right ? 1 : 0;
        return direction << directionShift | std::uint64_t{place.partner} << partnerShift | sliding << slidingShift |
               inOffsetOrder(place.direction, place.sliding, place.alignment);
    }

    double score_;
    std::uint64_t place_;
};
static_assert(sizeof(SortKey) == 16);

}  // namespace varnolix
