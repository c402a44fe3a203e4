#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "run/scored_shift.h"
#include "run/shared_records.h"
#include "scan/kernel/pair_kernel.h"
#include "scan/region_rule.h"

// The scan of motif pairs, for every list of motifs that is compared with another: the kernel takes the pairs it can,
// the plain form the others.

namespace varnolix {

/// The kept alignments of motifs with their partners: row i holds those of the left motif i, by partner and shift.
using ShiftRows = std::vector<std::vector<ScoredShift>>;

/// Two lists of motifs laid out for scoring. The lists must outlive it.
class PairScan {
  public:
    PairScan(std::span<const data> lefts, std::span<const data> rights, double cutoff);

    /// Appends the kept alignments of the left motif with the right ones first .. last - 1, by partner and shift.
    void scanPartners(std::size_t left, std::size_t first, std::size_t last, OuterMotif outer,
                      std::vector<ScoredShift>& kept, KernelScratch& scratch) const;

  private:
    const KernelMotifs& kernelLefts() const { return isOneList_ ? kernelRights_ : otherLefts_; }

    std::span<const data> lefts_;
    std::span<const data> rights_;
    bool isOneList_;
    KernelMotifs kernelRights_;
    KernelMotifs otherLefts_;  // empty where both lists are one
    // Places of the right motifs that are long enough for an alignment, and of those that the kernel does not take.
    std::vector<std::uint32_t> longRights_;
    std::vector<std::uint32_t> plainRights_;
    CutoffTable cutoffTable_;
    double cutoff_;
};

/// The kept alignments of each motif with those behind it in the list; rows are shared out among the threads.
ShiftRows scanAllPairs(std::span<const data> motifs, double cutoff);

/// The same for a block of motifs of one list, first .. last - 1, among themselves; row k belongs to motif first + k.
ShiftRows scanBlock(const PairScan& scan, std::size_t first, std::size_t last);

/// The places, ascending, of the rows that are not empty.
std::vector<std::size_t> filledRows(const ShiftRows& rows);

/// From the rows of a block, the alignments of its motifs first .. last - 1 with the motifs of the block before them:
/// list k holds those of motif first + k as left motif, by partner and shift.
/// @param filled the places, ascending, of the rows that hold any, so that motifs without matches cost nothing
/// @param lists keeps its memory from call to call
void gatherEarlier(const ShiftRows& rows, std::span<const std::size_t> filled, std::size_t firstOfBlock,
                   std::size_t first, std::size_t last, ShiftRows& lists);

/// The kept alignments of the motifs `lefts[chosen[k]]` with all of `rights`; the rows of the others stay empty.
ShiftRows scanAgainst(std::span<const data> lefts, std::span<const std::size_t> chosen, std::span<const data> rights,
                      double cutoff);

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

/// What the records of a motif need of it.
struct ListedMotif {
    int matrixID;
    int columns;
};

std::vector<ListedMotif> listMotifs(std::span<const data> motifs);

constexpr PairLengths lengthsOf(ListedMotif left, ListedMotif right) {
    return {left.columns, right.columns};
}

/// Makes room for the records of both directions in the list of each motif, so that no list is moved as it grows.
void reserveRecordsOfPairs(const ShiftRows& rows, std::span<const data> motifs, RecordLists& lists);

/// Appends the records of this direction of one pair's region: those in which the sliding motif is stored first.
void appendPairRecords(Direction direction, Sliding sliding, OuterMotif outer, ListedMotif left, ListedMotif right,
                       std::span<const ScoredShift> shifts, std::vector<dataCombinedScore>& list);

/// Appends to the list of each motif the records of this direction in which it is stored first. Both motifs of a pair
/// store records, those of the outer motif in its own list and those of the inner motif in that one's.
void appendRecordsOfPairs(Direction direction, const ShiftRows& rows, std::span<const data> motifs, RecordLists& lists);

/// Appends the records of this direction of one row: per pair those that store the left motif first, then those that
/// store the partner first.
void appendRecordsWithPartners(Direction direction, std::span<const ScoredShift> row, ListedMotif left,
                               std::span<const ListedMotif> rights, std::vector<dataCombinedScore>& list);

/// Does so for each row, into the list of its left motif.
void appendRecordsAgainst(Direction direction, const ShiftRows& rows, std::span<const data> lefts,
                          std::span<const data> rights, RecordLists& lists);

}  // namespace varnolix
