#include "rank/alignment_keys.h"

#include "run/run_limits.h"
#include "scan/region_rule.h"
#include "scan/score_bounds.h"

namespace varnolix {

namespace {

/// The sort key of each alignment, by the bounds of the motif over all of them: each is a record of the motif or of its
/// partner, and both name it.
void scoreAlignments(std::span<const ScoredShift> shifts, ListedMotif motif, std::span<const ListedMotif> partners,
                     KeyRooms& rooms) {
    rooms.columns.resize(shifts.size());
    rooms.shiftKeys.resize(shifts.size());
    maxScores bounds;
    for (std::size_t k = 0; k < shifts.size(); ++k) {
        rooms.columns[k] = overlapAt(lengthsOf(motif, partners[shifts[k].partner]), shifts[k].shift);
        raiseBounds(bounds, motif.matrixID, shifts[k].score, rooms.columns[k]);
    }
    for (std::size_t k = 0; k < shifts.size(); ++k) {
        rooms.shiftKeys[k] = combinedScoreOf(shifts[k].score, rooms.columns[k], bounds);
    }
}

/// Room for keys that are written one after the other, without a branch on whether they stay: hardly any such branch
/// could be foretold, and there are tens of millions of keys.
class KeyWriter {
  public:
    KeyWriter(std::vector<SortKey>& room, std::size_t most) {
        if (room.size() <= most) room.resize(most + 1);
        first_ = room.data();
        next_ = first_;
    }

    /// @param times 1 for a key that stays, else 0
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
std::span<SortKey> listKeys(std::span<const ScoredShift> shifts, ListedMotif motif,
                            std::span<const ListedMotif> partners, KeyRooms& rooms) {
    requireAtMost(shifts.size(), mostAlignmentsOfMotif, "alignments of a motif");
    scoreAlignments(shifts, motif, partners, rooms);
    const std::size_t mostForward = shifts.size() * (bothSlide ? 2 : 1);
    KeyWriter forward(rooms.keys, 2 * mostForward);
    // Backward records stand behind all forward ones, but the pairs are walked only once.
    KeyWriter backward(rooms.backwardKeys, mostForward);
    forEachPair(shifts, [&](std::uint32_t partner, std::span<const ScoredShift> ofPair) {
        const PairLengths lengths = lengthsOf(motif, partners[partner]);
        const auto write = [&](Direction direction, Sliding sliding, KeyWriter& keys) {
            forEachShift(direction, sliding, ofPair, [&](const ScoredShift& kept) {
                const auto alignment = static_cast<std::uint32_t>(&kept - shifts.data());
                keys.write({rooms.shiftKeys[alignment], {direction, partner, sliding, alignment}},
                           recordsOf(direction, sliding, lengths, kept));
            });
        };
        write(Direction::forward, Sliding::left, forward);
        if constexpr (bothSlide) write(Direction::forward, Sliding::right, forward);
        write(Direction::backward, Sliding::left, backward);
        if constexpr (bothSlide) write(Direction::backward, Sliding::right, backward);
    });
    for (const SortKey& key : backward.written()) forward.write(key, 1);
    return std::span(rooms.keys).first(forward.written().size());
}

}  // namespace

std::span<SortKey> keysOfMotifFirst(std::span<const ScoredShift> shifts, ListedMotif motif,
                                    std::span<const ListedMotif> partners, KeyRooms& rooms) {
    return listKeys<false>(shifts, motif, partners, rooms);
}

std::span<SortKey> keysOfPairs(std::span<const ScoredShift> shifts, ListedMotif motif,
                               std::span<const ListedMotif> partners, KeyRooms& rooms) {
    return listKeys<true>(shifts, motif, partners, rooms);
}

dataCombinedScore recordOfKey(const SortKey& key, std::span<const ScoredShift> shifts, ListedMotif motif,
                              ListedMotif partner, OuterMotif outer) {
    const RecordPlace place = key.place();
    std::vector<dataCombinedScore> records;
    appendPairRecords(place.direction, place.sliding, outer, motif, partner, shifts.subspan(place.alignment, 1),
                      records);
    records.front().combinedScore = key.score();
    return records.front();
}

}  // namespace varnolix
