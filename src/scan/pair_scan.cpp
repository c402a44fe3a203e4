#include "scan/pair_scan.h"

#include <algorithm>

#include "scan/plain_score.h"

namespace varnolix {

namespace {

Strands strandsOf(const data& motif) {
    return {motif.matrix, motif.revCompMatrix};
}

/// The part of a row whose partners lie in first .. last - 1.
std::span<const ScoredShift> partnersWithin(std::span<const ScoredShift> row, std::size_t first, std::size_t last) {
    const auto isBefore = [](const ScoredShift& kept, std::size_t partner) { return kept.partner < partner; };
    const auto from = std::lower_bound(row.begin(), row.end(), first, isBefore);
    const auto to = std::lower_bound(from, row.end(), last, isBefore);
    return std::span(from, to);
}

}  // namespace

std::vector<ListedMotif> listMotifs(std::span<const data> motifs) {
    std::vector<ListedMotif> listed;
    listed.reserve(motifs.size());
    for (const data& motif : motifs) listed.push_back({motif.matrixID, static_cast<int>(motif.matrix.size())});
    return listed;
}

PairScan::PairScan(std::span<const data> lefts, std::span<const data> rights, const AlignmentLimits& limits)
    : limits_(limits),
      lefts_(lefts),
      rights_(rights),
      isOneList_(lefts.data() == rights.data() && lefts.size() == rights.size()),
      kernelRights_(rights),
      otherLefts_(isOneList_ ? std::span<const data>() : lefts) {
    for (std::size_t right = 0; right < rights.size(); ++right) {
        if (!isLongEnough(rights[right])) continue;
        longRights_.push_back(static_cast<std::uint32_t>(right));
        if (!kernelTakes(kernelRights_, right)) plainRights_.push_back(static_cast<std::uint32_t>(right));
    }
}

void PairScan::scanPartners(std::size_t left, std::size_t first, std::size_t last, OuterMotif outer,
                            std::vector<ScoredShift>& kept, KernelScratch& scratch) const {
    if (!isLongEnough(lefts_[left])) return;
    const bool isKernelLeft = kernelTakes(kernelLefts(), left);
    const std::vector<std::uint32_t>& unscored = isKernelLeft ? plainRights_ : longRights_;
    const auto scoreExact = [&](std::size_t from, std::size_t to) {
        if (!isKernelLeft) return;
        scoreShifts(kernelLefts(), left, kernelRights_, from, to, limits_.cutoffTable, outer, kept, scratch);
    };
    for (auto right = std::lower_bound(unscored.begin(), unscored.end(), first);
         right != unscored.end() && *right < last; ++right) {
        scoreExact(first, *right);
        appendPlainShifts(strandsOf(lefts_[left]), strandsOf(rights_[*right]), outer, *right, limits_.leastOverlap,
                          limits_.perfectCell, limits_.cutoff, bothWalks, kept);
        first = std::size_t{*right} + 1;
    }
    scoreExact(first, last);
}

ShiftRows scanBlock(const PairScan& scan, std::span<const std::size_t> chosen, std::size_t first, std::size_t last) {
    ShiftRows rows(last - first);
    const auto from = std::lower_bound(chosen.begin(), chosen.end(), first);
    const std::span<const std::size_t> lefts(from, std::lower_bound(from, chosen.end(), last));
#pragma omp parallel
    {
        // A row is copied when it is complete, so that it takes no more memory than it needs.
        std::vector<ScoredShift> row;
        KernelScratch scratch;
        // Within one list rows get shorter towards the end of the block, so they are handed out one by one.
#pragma omp for schedule(dynamic)
        for (const std::size_t left : lefts) {
            const std::size_t firstPartner = scan.isOneList() ? left + 1 : 0;
            const std::size_t lastPartner = scan.isOneList() ? last : scan.rights().size();
            row.clear();
            scan.scanPartners(left, firstPartner, lastPartner, OuterMotif::left, row, scratch);
            rows[left - first].assign(row.begin(), row.end());
        }
    }
    return rows;
}

std::vector<std::size_t> filledRows(const ShiftRows& rows) {
    std::vector<std::size_t> filled;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (!rows[row].empty()) filled.push_back(row);
    }
    return filled;
}

void gatherEarlier(const ShiftRows& rows, std::span<const std::size_t> filled, std::size_t firstOfBlock,
                   std::size_t first, std::size_t last, ShiftRows& lists) {
    lists.resize(last - first);
    for (std::vector<ScoredShift>& list : lists) list.clear();
    for (const std::size_t place : filled) {
        const std::size_t left = firstOfBlock + place;
        if (left + 1 >= last) break;
        const std::span<const ScoredShift> row = partnersWithin(rows[place], first, last);
        // Seen from the partner, shifts ascend where they descend in the row.
        std::for_each(row.rbegin(), row.rend(), [&](const ScoredShift& kept) {
            lists[kept.partner - first].push_back(seenFromPartner(kept, left));
        });
    }
}

void appendPairRecords(Direction direction, Sliding sliding, OuterMotif outer, ListedMotif left, ListedMotif right,
                       std::span<const ScoredShift> shifts, std::vector<dataCombinedScore>& list) {
    const bool leftFirst = sliding == Sliding::left;
    const bool outerFirst = leftFirst == (outer == OuterMotif::left);
    const StoredIDs ids =
        leftFirst ? StoredIDs{left.matrixID, right.matrixID} : StoredIDs{right.matrixID, left.matrixID};
    const PrimaryFlag flag = outerFirst ? PrimaryFlag::yes : PrimaryFlag::empty;
    const PairLengths lengths = lengthsOf(left, right);
    forEachOffset(direction, sliding, lengths, shifts, [&](const ScoredShift& kept, int offset) {
        list.push_back(makeRecord(kept, offset, direction, flag, ids, lengths));
    });
}

}  // namespace varnolix
