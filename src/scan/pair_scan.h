#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "run/scored_shift.h"
#include "run/shared_records.h"
#include "scan/alignment_limits.h"
#include "scan/kernel/pair_kernel.h"
#include "scan/region_rule.h"

// Scans the pairs of two lists of motifs, or of a list with itself. The kernel scores the pairs that it can take, and
// the plain form scores the others.

namespace varnolix {

/// The kept alignments of motifs with their partners: row i holds those of the left motif i, ordered by partner and
/// shift.
using ShiftRows = std::vector<std::vector<ScoredShift>>;

/// Two lists of motifs prepared for scoring. The lists must outlive it.
class PairScan {
  public:
    PairScan(std::span<const data> lefts, std::span<const data> rights, const AlignmentLimits& limits);

    /// Appends the kept alignments of the left motif with the right motifs first .. last - 1, ordered by partner and
    /// shift.
    void scanPartners(std::size_t left, std::size_t first, std::size_t last, OuterMotif outer,
                      std::vector<ScoredShift>& kept, KernelScratch& scratch) const;

    bool isOneList() const { return isOneList_; }
    std::span<const data> lefts() const { return lefts_; }
    std::span<const data> rights() const { return rights_; }

  private:
    const KernelMotifs& kernelLefts() const { return isOneList_ ? kernelRights_ : otherLefts_; }
    /// Whether the kernel scores the motif's pairs with others of which this is true.
    bool kernelTakes(const KernelMotifs& motifs, std::size_t place) const {
        return limits_.suitKernel() && motifs.isExact(place);
    }
    /// Shorter motifs have no alignments.
    bool isLongEnough(const data& motif) const {
        return motif.matrix.size() >= static_cast<std::size_t>(limits_.leastOverlap);
    }

    AlignmentLimits limits_;
    std::span<const data> lefts_;
    std::span<const data> rights_;
    bool isOneList_;
    KernelMotifs kernelRights_;
    KernelMotifs otherLefts_;  // empty where both lists are one
    // Places of the right motifs that are long enough for an alignment, and of those that the kernel does not take.
    std::vector<std::uint32_t> longRights_;
    std::vector<std::uint32_t> plainRights_;
};

/// The kept alignments of the left motifs first .. last - 1; row k belongs to motif first + k. Within one list, a motif
/// is compared with those after it in the block, otherwise with all right motifs. The threads share the work.
/// @param chosen places of the left motifs to compare, ascending; the rows of the others stay empty
ShiftRows scanBlock(const PairScan& scan, std::span<const std::size_t> chosen, std::size_t first, std::size_t last);

/// The places, ascending, of the rows that are not empty.
std::vector<std::size_t> filledRows(const ShiftRows& rows);

/// Collects from the rows of a block the alignments of its motifs first .. last - 1 with earlier motifs of the block.
/// List k holds those of motif first + k, which is now the left motif, ordered by partner and shift.
/// @param filled the places, ascending, of the rows that are not empty, so that motifs without matches cost nothing
/// @param lists receives the alignments; its memory is reused from call to call
void gatherEarlier(const ShiftRows& rows, std::span<const std::size_t> filled, std::size_t firstOfBlock,
                   std::size_t first, std::size_t last, ShiftRows& lists);

/// Calls use(partner, shifts) for the pairs of a row, in their order.
template <class Use>
void forEachPair(std::span<const ScoredShift> row, Use use) {
    for (auto from = row.begin(); from != row.end();) {
        const std::uint32_t partner = from->partner;
        const auto to = std::find_if(from, row.end(), [&](const ScoredShift& kept) { return kept.partner != partner; });
        use(partner, std::span(from, to));
        from = to;
    }
}

/// What a record needs to know about a motif.
struct ListedMotif {
    int matrixID;
    int columns;
};

std::vector<ListedMotif> listMotifs(std::span<const data> motifs);

constexpr PairLengths lengthsOf(ListedMotif left, ListedMotif right) {
    return {left.columns, right.columns};
}

/// Appends the records of one region of a pair in this direction. They store the sliding motif first.
void appendPairRecords(Direction direction, Sliding sliding, OuterMotif outer, ListedMotif left, ListedMotif right,
                       std::span<const ScoredShift> shifts, std::vector<dataCombinedScore>& list);

}  // namespace varnolix
