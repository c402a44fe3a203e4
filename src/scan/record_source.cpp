#include "scan/record_source.h"

#include <memory>

#include "scan/score_bounds.h"

namespace varnolix {

namespace {

/// Gives the records their keys by the bounds of the motif over all its alignments. Each alignment is a record of the
/// motif or of its partner, and both name it.
void setCombinedScores(RecordScratch& scratch, ListedMotif motif, std::span<const ListedMotif> partners) {
    maxScores bounds;
    for (const ScoredShift& kept : scratch.shifts) {
        const PairLengths lengths = lengthsOf(motif, partners[kept.partner]);
        raiseBounds(bounds, motif.matrixID, kept.score, overlapAt(lengths, kept.shift));
    }
    for (dataCombinedScore& record : scratch.records) {
        record.combinedScore = combinedScoreOf(record.similarityScore, static_cast<int>(record.overlap), bounds);
    }
}

constexpr Direction directions[] = {Direction::forward, Direction::backward};

}  // namespace

RecordSource heldRecords(const RecordLists& lists) {
    return [&lists](std::size_t motif, RecordScratch&) { return std::span<const dataCombinedScore>(lists[motif]); };
}

RecordSource remadeInputRecords(std::span<const data> motifs, double cutoff) {
    const auto scan = std::make_shared<const PairScan>(motifs, motifs, cutoff);
    return [scan, listed = listMotifs(motifs)](std::size_t motif,
                                               RecordScratch& scratch) -> std::span<const dataCombinedScore> {
        scratch.shifts.clear();
        scratch.records.clear();
        scan->scanPartners(motif, 0, motif, OuterMotif::right, scratch.shifts);
        scan->scanPartners(motif, motif + 1, listed.size(), OuterMotif::left, scratch.shifts);
        for (const Direction direction : directions) {
            forEachPair(scratch.shifts, [&](std::uint32_t partner, std::span<const ScoredShift> shifts) {
                const OuterMotif outer = partner < motif ? OuterMotif::right : OuterMotif::left;
                appendPairRecords(direction, Sliding::left, outer, listed[motif], listed[partner], shifts,
                                  scratch.records);
            });
        }
        setCombinedScores(scratch, listed[motif], listed);
        return scratch.records;
    };
}

RecordSource remadeCollectionRecords(std::span<const data> motifs, std::span<const data> references, double cutoff) {
    const auto scan = std::make_shared<const PairScan>(motifs, references, cutoff);
    return [scan, listed = listMotifs(motifs), partners = listMotifs(references)](
               std::size_t motif, RecordScratch& scratch) -> std::span<const dataCombinedScore> {
        scratch.shifts.clear();
        scratch.records.clear();
        scan->scanPartners(motif, 0, partners.size(), OuterMotif::left, scratch.shifts);
        for (const Direction direction : directions) {
            appendRecordsWithPartners(direction, scratch.shifts, listed[motif], partners, scratch.records);
        }
        setCombinedScores(scratch, listed[motif], partners);
        return scratch.records;
    };
}

}  // namespace varnolix
