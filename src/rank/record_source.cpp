#include "rank/record_source.h"

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

/// The sort key of each alignment, by the bounds of the motif over all of them: each is a record of the motif or of its
/// partner, and both name it.
void scoreAlignments(RecordScratch& scratch, ListedMotif motif, std::span<const ListedMotif> partners) {
    const auto columns = [&](const ScoredShift& kept) {
        return overlapAt(lengthsOf(motif, partners[kept.partner]), kept.shift);
    };
    maxScores bounds;
    for (const ScoredShift& kept : scratch.shifts) raiseBounds(bounds, motif.matrixID, kept.score, columns(kept));
    scratch.shiftKeys.clear();
    for (const ScoredShift& kept : scratch.shifts) {
        scratch.shiftKeys.push_back(combinedScoreOf(kept.score, columns(kept), bounds));
    }
}

/// Lists the keys of the records that store the motif first, or, where both motifs slide, of all records of its pairs.
void listRemadeKeys(RecordScratch& scratch, ListedMotif motif, std::span<const ListedMotif> partners, bool bothSlide) {
    scoreAlignments(scratch, motif, partners);
    scratch.keys.clear();
    scratch.backwardKeys.clear();
    // Backward records stand behind all forward ones, but the pairs are walked only once.
    forEachPair(scratch.shifts, [&](std::uint32_t partner, std::span<const ScoredShift> shifts) {
        const PairLengths lengths = lengthsOf(motif, partners[partner]);
        for (const Direction direction : {Direction::forward, Direction::backward}) {
            std::vector<SortKey>& keys = direction == Direction::forward ? scratch.keys : scratch.backwardKeys;
            for (const Sliding sliding : {Sliding::left, Sliding::right}) {
                if (sliding == Sliding::right && !bothSlide) break;
                forEachOffset(direction, sliding, lengths, shifts, [&](const ScoredShift& kept, int) {
                    const auto alignment = static_cast<std::uint32_t>(&kept - scratch.shifts.data());
                    const std::uint32_t place = RemadeRecord{alignment, direction, sliding}.place();
                    keys.push_back({scratch.shiftKeys[alignment], place, partner});
                });
            }
        }
    });
    scratch.keys.insert(scratch.keys.end(), scratch.backwardKeys.begin(), scratch.backwardKeys.end());
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

template <class PartnerID>
RecordSource heldRecords(const RecordLists& lists, PartnerID partnerID) {
    return {[&lists, partnerID](std::size_t motif, RecordScratch& scratch) {
                scratch.keys.clear();
                for (const dataCombinedScore& record : lists[motif]) {
                    scratch.keys.push_back({record.combinedScore, static_cast<std::uint32_t>(scratch.keys.size()),
                                            static_cast<std::uint32_t>(partnerID(record) - 1)});
                }
            },
            [&lists](std::size_t motif, const RecordScratch&, const SortKey& key) { return lists[motif][key.place]; }};
}

}  // namespace

RecordSource heldInputRecords(const RecordLists& lists) {
    return heldRecords(lists, [](const dataCombinedScore& record) { return record.matrixID2; });
}

RecordSource heldCollectionRecords(const RecordLists& lists) {
    return heldRecords(lists, innerMatrixID);
}

RecordSource remadeInputRecords(std::span<const data> motifs, double cutoff) {
    const auto lists = std::make_shared<const RemadeLists>(motifs, motifs, cutoff);
    return {[lists](std::size_t motif, RecordScratch& scratch) {
                scratch.shifts.clear();
                lists->scan.scanPartners(motif, 0, motif, OuterMotif::right, scratch.shifts);
                lists->scan.scanPartners(motif, motif + 1, lists->partners.size(), OuterMotif::left, scratch.shifts);
                listRemadeKeys(scratch, lists->motifs[motif], lists->partners, false);
            },
            [lists](std::size_t motif, const RecordScratch& scratch, const SortKey& key) {
                const OuterMotif outer = key.partner < motif ? OuterMotif::right : OuterMotif::left;
                return remadeRecord(scratch, key, lists->motifs[motif], lists->partners[key.partner], outer);
            }};
}

RecordSource remadeCollectionRecords(std::span<const data> motifs, std::span<const data> references, double cutoff) {
    const auto lists = std::make_shared<const RemadeLists>(motifs, references, cutoff);
    return {[lists](std::size_t motif, RecordScratch& scratch) {
                scratch.shifts.clear();
                lists->scan.scanPartners(motif, 0, lists->partners.size(), OuterMotif::left, scratch.shifts);
                listRemadeKeys(scratch, lists->motifs[motif], lists->partners, true);
            },
            [lists](std::size_t motif, const RecordScratch& scratch, const SortKey& key) {
                return remadeRecord(scratch, key, lists->motifs[motif], lists->partners[key.partner], OuterMotif::left);
            }};
}

}  // namespace varnolix
