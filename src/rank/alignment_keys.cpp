#include "rank/alignment_keys.h"

#include "run/system/run_limits.h"
#include "scan/region_rule.h"
#include "scan/score_bounds.h"

namespace varnolix {

namespace {

/// Finds the bounds of the motif and, from them, the sort key of each alignment. All alignments count for the bounds:
/// each has a record that stores the motif first or second, and so names it.
void scoreAlignments(const MotifAlignments& alignments, maxScores& bounds, KeyBuffers& buffers) {
    const std::span<const ScoredShift> shifts = alignments.shifts;
    requireAtMost(shifts.size(), mostAlignmentsOfMotif, "alignments of a motif");
    buffers.columns.resize(shifts.size());
    buffers.shiftKeys.resize(shifts.size());
    for (std::size_t k = 0; k < shifts.size(); ++k) {
        const PairLengths lengths = lengthsOf(alignments.motif, alignments.partners[shifts[k].partner]);
        buffers.columns[k] = overlapAt(lengths, shifts[k].shift);
        raiseBounds(bounds, alignments.motif.matrixID, shifts[k].score, buffers.columns[k]);
    }
    for (std::size_t k = 0; k < shifts.size(); ++k) {
        buffers.shiftKeys[k] = alignments.isScored ? combinedScoreOf(shifts[k].score, buffers.columns[k], bounds) : 0.0;
    }
}

/// Writes keys one after the other. Each is stored unconditionally, and the next one overwrites it unless it is kept:
/// there are tens of millions of keys, and a branch would mispredict.
class KeyWriter {
  public:
    KeyWriter(std::vector<SortKey>& buffer, std::size_t most) {
        if (buffer.size() <= most) buffer.resize(most + 1);
        first_ = buffer.data();
        next_ = first_;
    }

    /// @param times 1 for a key that is kept, otherwise 0
    void write(const SortKey& key, unsigned times) {
        *next_ = key;
        next_ += times;
    }
    std::span<const SortKey> written() const { return {first_, next_}; }

  private:
    SortKey* first_;
    SortKey* next_;
};

/// @tparam bothSlide whether records that store the partner first count too
template <bool bothSlide>
std::span<SortKey> listKeys(const MotifAlignments& alignments, maxScores& bounds, KeyBuffers& buffers) {
    scoreAlignments(alignments, bounds, buffers);
    const std::span<const ScoredShift> shifts = alignments.shifts;
    const std::size_t mostForward = shifts.size() * (bothSlide ? 2 : 1);
    KeyWriter forward(buffers.keys, 2 * mostForward);
    // Backward records come after all forward ones. A second writer saves a second pass over the pairs.
    KeyWriter backward(buffers.backwardKeys, mostForward);
    forEachPair(shifts, [&](std::uint32_t partner, std::span<const ScoredShift> ofPair) {
        const PairLengths lengths = lengthsOf(alignments.motif, alignments.partners[partner]);
        const auto write = [&](Direction direction, Sliding sliding, KeyWriter& keys) {
            forEachShift(direction, sliding, ofPair, [&](const ScoredShift& kept) {
                const auto alignment = static_cast<std::uint32_t>(&kept - shifts.data());
                keys.write({buffers.shiftKeys[alignment], {direction, partner, sliding, alignment}},
                           recordsOf(direction, sliding, lengths, kept));
            });
        };
        if (alignments.hasForward) {
            write(Direction::forward, Sliding::left, forward);
            if constexpr (bothSlide) write(Direction::forward, Sliding::right, forward);
        }
        if (alignments.hasBackward) {
            write(Direction::backward, Sliding::left, backward);
            if constexpr (bothSlide) write(Direction::backward, Sliding::right, backward);
        }
    });
    for (const SortKey& key : backward.written()) forward.write(key, 1);
    return std::span(buffers.keys).first(forward.written().size());
}

}  // namespace

std::span<SortKey> keysOfMotifFirst(const MotifAlignments& alignments, maxScores& bounds, KeyBuffers& buffers) {
    return listKeys<false>(alignments, bounds, buffers);
}

std::span<SortKey> keysOfPairs(const MotifAlignments& alignments, maxScores& bounds, KeyBuffers& buffers) {
    return listKeys<true>(alignments, bounds, buffers);
}

dataCombinedScore recordOfKey(const SortKey& key, const MotifAlignments& alignments, OuterMotif outer) {
    const RecordPlace place = key.place();
    std::vector<dataCombinedScore> records;
    appendPairRecords(place.direction, place.sliding, outer, alignments.motif, alignments.partners[place.partner],
                      alignments.shifts.subspan(place.alignment, 1), records);
    records.front().combinedScore = key.score();
    return records.front();
}

}  // namespace varnolix
