#include "rank/record_source.h"

#include <omp.h>

#include <limits>
#include <memory>

#include "run/record_fields.h"
#include "scan/pair_scan.h"
#include "scan/score_bounds.h"

namespace varnolix {

namespace {

/// What the key of a record made anew says of it in its place: an alignment, a direction, and the motif that slides.
struct RemadeRecord {
    std::uint32_t alignment;
    Direction direction;
    Sliding sliding;

    std::uint32_t place() const {
        return alignment << 2U | static_cast<std::uint32_t>(direction) << 1U | static_cast<std::uint32_t>(sliding);
    }
    static RemadeRecord at(std::uint32_t place) {
        return {place >> 2U, static_cast<Direction>(place >> 1U & 1U), static_cast<Sliding>(place & 1U)};
    }
};

/// Two lists of motifs and their scan.
struct RemadeLists {
    PairScan scan;
    std::vector<ListedMotif> motifs;
    std::vector<ListedMotif> partners;

    RemadeLists(std::span<const data> lefts, std::span<const data> rights, double cutoff)
        : scan(lefts, rights, cutoff), motifs(listMotifs(lefts)), partners(listMotifs(rights)) {}
};

/// The motifs of an input, and the alignments among those of the block under work.
struct RemadeBlocks {
    RemadeLists lists;
    std::size_t first = 0;
    std::size_t last = 0;
    std::size_t runSize;
    ShiftRows rows;

    RemadeBlocks(std::span<const data> motifs, double cutoff, std::size_t blockSize)
        : lists(motifs, motifs, cutoff), runSize(runSizeOf(blockSize)) {}

    void prepare(std::size_t firstOfBlock, std::size_t lastOfBlock) {
        first = firstOfBlock;
        last = lastOfBlock;
        rows = {};  // freed before the next rows take their memory
        rows = scanBlock(lists.scan, first, last);
    }

    /// All alignments of a motif of the block, by partner and shift.
    void gather(std::size_t motif, RecordScratch& scratch) const {
        std::vector<ScoredShift>& shifts = scratch.shifts;
        const auto append = [&](const std::vector<ScoredShift>& more) {
            shifts.insert(shifts.end(), more.begin(), more.end());
        };
        const std::size_t firstOfRun = motif - (motif - first) % runSize;
        if (scratch.firstOfRun != firstOfRun) {
            gatherEarlier(rows, first, firstOfRun, std::min(last, firstOfRun + runSize), scratch.earlier);
            scratch.firstOfRun = firstOfRun;
        }
        shifts.clear();
        lists.scan.scanPartners(motif, 0, first, OuterMotif::right, shifts);
        append(scratch.earlier[motif - firstOfRun]);
        append(rows[motif - first]);
        lists.scan.scanPartners(motif, last, lists.partners.size(), OuterMotif::left, shifts);
    }

  private:
    /// Neighbours find their earlier alignments in the same places of memory, but all threads shall have work.
    static std::size_t runSizeOf(std::size_t blockSize) {
        constexpr std::size_t mostInRun = 32;
        constexpr std::size_t runsPerThread = 8;
        const auto threads = static_cast<std::size_t>(omp_get_max_threads());
        return std::clamp<std::size_t>(blockSize / (runsPerThread * threads), 1, mostInRun);
    }
};

/// The sort key of each alignment, by the bounds of the motif over all of them: each is a record of the motif or of its
/// partner, and both name it.
void scoreAlignments(RecordScratch& scratch, ListedMotif motif, std::span<const ListedMotif> partners) {
    const std::size_t alignments = scratch.shifts.size();
    scratch.columns.resize(alignments);
    scratch.shiftKeys.resize(alignments);
    maxScores bounds;
    for (std::size_t k = 0; k < alignments; ++k) {
        const ScoredShift& kept = scratch.shifts[k];
        scratch.columns[k] = overlapAt(lengthsOf(motif, partners[kept.partner]), kept.shift);
        raiseBounds(bounds, motif.matrixID, kept.score, scratch.columns[k]);
    }
    for (std::size_t k = 0; k < alignments; ++k) {
        scratch.shiftKeys[k] = combinedScoreOf(scratch.shifts[k].score, scratch.columns[k], bounds);
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

/// Lists the keys of the records that store the motif first, or, where both motifs slide, of all records of its pairs.
template <bool bothSlide>
void listRemadeKeys(RecordScratch& scratch, ListedMotif motif, std::span<const ListedMotif> partners) {
    scoreAlignments(scratch, motif, partners);
    const std::size_t mostForward = scratch.shifts.size() * (bothSlide ? 2 : 1);
    KeyWriter forward(scratch.keyRoom, 2 * mostForward);
    // Backward records stand behind all forward ones, but the pairs are walked only once.
    KeyWriter backward(scratch.backwardRoom, mostForward);
    forEachPair(scratch.shifts, [&](std::uint32_t partner, std::span<const ScoredShift> shifts) {
        const PairLengths lengths = lengthsOf(motif, partners[partner]);
        const auto write = [&](Direction direction, Sliding sliding, KeyWriter& keys) {
            forEachShift(direction, sliding, shifts, [&](const ScoredShift& kept) {
                const auto alignment = static_cast<std::uint32_t>(&kept - scratch.shifts.data());
                const std::uint32_t place = RemadeRecord{alignment, direction, sliding}.place();
                keys.write({scratch.shiftKeys[alignment], place, partner},
                           recordsOf(direction, sliding, lengths, kept));
            });
        };
        write(Direction::forward, Sliding::left, forward);
        if constexpr (bothSlide) write(Direction::forward, Sliding::right, forward);
        write(Direction::backward, Sliding::left, backward);
        if constexpr (bothSlide) write(Direction::backward, Sliding::right, backward);
    });
    for (const SortKey& key : backward.written()) forward.write(key, 1);
    scratch.keys = std::span(scratch.keyRoom).first(forward.written().size());
}

dataCombinedScore remadeRecord(const RecordScratch& scratch, const SortKey& key, ListedMotif motif, ListedMotif partner,
                               OuterMotif outer) {
    const RemadeRecord remade = RemadeRecord::at(key.place);
    std::vector<dataCombinedScore> records;
    appendPairRecords(remade.direction, remade.sliding, outer, motif, partner,
                      std::span(&scratch.shifts[remade.alignment], 1), records);
    records.front().combinedScore = key.key;
    return records.front();
}

/// A source that needs no preparation.
template <class ListKeys, class RecordOf>
RecordSource unpreparedSource(ListKeys listKeys, RecordOf recordOf) {
    return {std::numeric_limits<std::size_t>::max() / 2, 1, [](std::size_t, std::size_t) {}, listKeys, recordOf};
}

template <class PartnerID>
RecordSource heldRecords(const RecordLists& lists, PartnerID partnerID) {
    return unpreparedSource(
        [&lists, partnerID](std::size_t motif, RecordScratch& scratch) {
            scratch.keyRoom.clear();
            for (const dataCombinedScore& record : lists[motif]) {
                scratch.keyRoom.push_back({record.combinedScore, static_cast<std::uint32_t>(scratch.keyRoom.size()),
                                           static_cast<std::uint32_t>(partnerID(record) - 1)});
            }
            scratch.keys = scratch.keyRoom;
        },
        [&lists](std::size_t motif, const RecordScratch&, const SortKey& key) { return lists[motif][key.place]; });
}

}  // namespace

RecordSource heldInputRecords(const RecordLists& lists) {
    return heldRecords(lists, [](const dataCombinedScore& record) { return record.matrixID2; });
}

RecordSource heldCollectionRecords(const RecordLists& lists) {
    return heldRecords(lists, innerMatrixID);
}

RecordSource remadeInputRecords(std::span<const data> motifs, double cutoff, std::size_t blockSize) {
    const auto blocks = std::make_shared<RemadeBlocks>(motifs, cutoff, blockSize);
    return {blockSize, blocks->runSize, [blocks](std::size_t first, std::size_t last) { blocks->prepare(first, last); },
            [blocks](std::size_t motif, RecordScratch& scratch) {
                blocks->gather(motif, scratch);
                listRemadeKeys<false>(scratch, blocks->lists.motifs[motif], blocks->lists.partners);
            },
            [blocks](std::size_t motif, const RecordScratch& scratch, const SortKey& key) {
                const RemadeLists& lists = blocks->lists;
                const OuterMotif outer = key.partner < motif ? OuterMotif::right : OuterMotif::left;
                return remadeRecord(scratch, key, lists.motifs[motif], lists.partners[key.partner], outer);
            }};
}

RecordSource remadeCollectionRecords(std::span<const data> motifs, std::span<const data> references, double cutoff) {
    const auto lists = std::make_shared<const RemadeLists>(motifs, references, cutoff);
    return unpreparedSource(
        [lists](std::size_t motif, RecordScratch& scratch) {
            scratch.shifts.clear();
            lists->scan.scanPartners(motif, 0, lists->partners.size(), OuterMotif::left, scratch.shifts);
            listRemadeKeys<true>(scratch, lists->motifs[motif], lists->partners);
        },
        [lists](std::size_t motif, const RecordScratch& scratch, const SortKey& key) {
            return remadeRecord(scratch, key, lists->motifs[motif], lists->partners[key.partner], OuterMotif::left);
        });
}

}  // namespace varnolix
