#pragma once

#include <algorithm>
#include <span>

#include "run/scored_shift.h"
#include "run/shared_records.h"

// Which records the scans make from the scored alignments of a pair, and in which order.
//
// A scan of a pair has two regions: in the first the outer motif slides along the inner one, in the second the inner
// one slides. With B sliding along the fixed A, offset p puts the first column of B on column p of A (forward), or the
// last column of B p columns before the last column of A (backward), for p = 0 .. len(A) - overlap, and B is stored
// first. In both directions the two motifs are compared along a whole diagonal, so an alignment is described by one
// number, its shift. Each shift stands for one record in each direction, or for two if the offset is 0 in both regions.
// Tested by region_rule_test.cpp against a plain walk of both regions.

namespace varnolix {

struct PairLengths {
    int left;
    int right;
};

/// The motif of the pair that slides along the other.
enum class Sliding { left, right };

/// Number of columns compared where column k of the left motif faces column k + shift of the right one.
constexpr int overlapAt(PairLengths lengths, int shift) {
    return std::min(lengths.left, lengths.right - shift) - std::max(0, -shift);
}

/// The smallest and the largest shift of a pair whose alignments have at least `leastOverlap` columns.
constexpr int leastShift(PairLengths lengths, int leastOverlap) {
    return leastOverlap - lengths.left;
}
constexpr int mostShift(PairLengths lengths, int leastOverlap) {
    return lengths.right - leastOverlap;
}

/// The offset p of the shift in the region where this motif slides; negative if the shift does not occur in that
/// region.
constexpr int offsetAt(Direction direction, Sliding sliding, PairLengths lengths, int shift) {
    const int fromStart = direction == Direction::forward ? shift : lengths.right - lengths.left - shift;
    return sliding == Sliding::left ? fromStart : -fromStart;
}

/// The scan that walks in this direction.
constexpr Walks walkOf(Direction direction) {
    return direction == Direction::forward ? forwardWalk : backwardWalk;
}

/// Whether larger shifts have larger offsets in this region.
constexpr bool offsetsAscend(Direction direction, Sliding sliding) {
    return (direction == Direction::forward) == (sliding == Sliding::left);
}

/// 1 if the region has a record of the kept alignment, otherwise 0. It has one if the offset is not negative and the
/// scan found the alignment. There is no branch, as a run may have tens of millions of alignments.
constexpr unsigned recordsOf(Direction direction, Sliding sliding, PairLengths lengths, const ScoredShift& kept) {
    const unsigned isReached = offsetAt(direction, sliding, lengths, kept.shift) >= 0 ? 1U : 0U;
    const unsigned isMet = (kept.walks & walkOf(direction)) != 0 ? 1U : 0U;
    return isReached & isMet;
}

/// Calls visit(shift) for all kept alignments of a pair by ascending offset, as this region lists them.
/// @param shifts by ascending shift
template <class Visit>
void forEachShift(Direction direction, Sliding sliding, std::span<const ScoredShift> shifts, Visit visit) {
    if (offsetsAscend(direction, sliding)) {
        std::for_each(shifts.begin(), shifts.end(), visit);
    } else {
        std::for_each(shifts.rbegin(), shifts.rend(), visit);
    }
}

/// Calls use(shift, offset) for the alignments of a pair that have a record in this region, by ascending offset.
/// @param shifts the kept alignments of the pair, by ascending shift
template <class Use>
void forEachOffset(Direction direction, Sliding sliding, PairLengths lengths, std::span<const ScoredShift> shifts,
                   Use use) {
    forEachShift(direction, sliding, shifts, [&](const ScoredShift& kept) {
        if (recordsOf(direction, sliding, lengths, kept) != 0) {
            use(kept, offsetAt(direction, sliding, lengths, kept.shift));
        }
    });
}

/// The format labels of a record: of the motif stored first, and of the one stored second. They are the two bits of the
/// orientation, which names the outer motif first. Records of the second region store the inner motif first, so their
/// labels are crossed: each motif has the label of the other. This is what the reports are meant to print. Tested by
/// region_rule_test.cpp.
constexpr MatchingFormat firstFormat(Orientation orientation) {
    return static_cast<MatchingFormat>(static_cast<unsigned>(orientation) >> 1U);
}

constexpr MatchingFormat secondFormat(Orientation orientation) {
    return static_cast<MatchingFormat>(static_cast<unsigned>(orientation) & 1U);
}

static_assert(firstFormat(Orientation::firstReversed) == MatchingFormat::reverseComplement &&
              secondFormat(Orientation::firstReversed) == MatchingFormat::originalMotif &&
              secondFormat(Orientation::secondReversed) == MatchingFormat::reverseComplement);

/// Ids of the motifs of a record, in the order in which they are stored.
struct StoredIDs {
    int first;
    int second;
};

inline dataCombinedScore makeRecord(const ScoredShift& kept, int offset, Direction direction, PrimaryFlag flag,
                                    StoredIDs ids, PairLengths lengths) {
    constexpr std::uint32_t fieldMask = (1U << 30U) - 1U;
    dataCombinedScore record{};
    record.matrixID1 = ids.first;
    record.matrixID2 = ids.second;
    record.position = static_cast<std::uint32_t>(offset + 1) & fieldMask;
    record.direction = direction;
    record.primaryFlag = flag;
    record.overlap = static_cast<std::uint32_t>(overlapAt(lengths, kept.shift)) & fieldMask;
    record.matchingFormat1 = firstFormat(kept.orientation);
    record.matchingFormat2 = secondFormat(kept.orientation);
    record.similarityScore = kept.score;
    return record;
}

}  // namespace varnolix
