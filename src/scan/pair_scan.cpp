#include "scan/pair_scan.h"

#include <algorithm>

#include "scan/plain_score.h"

namespace varnolix {

namespace {

Strands strandsOf(const data& motif) {
    return {motif.matrix, motif.revCompMatrix};
}

/// Shorter motifs take part in nothing.
bool isLongEnough(const data& motif) {
    return motif.matrix.size() >= static_cast<std::size_t>(overlap);
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

PairScan::PairScan(std::span<const data> lefts, std::span<const data> rights, double cutoff)
    : lefts_(lefts),
      rights_(rights),
      isOneList_(lefts.data() == rights.data() && lefts.size() == rights.size()),
      kernelRights_(rights),
      otherLefts_(isOneList_ ? std::span<const data>() : lefts),
      cutoffTable_(cutoff),
      cutoff_(cutoff) {
    for (std::size_t right = 0; right < rights.size(); ++right) {
        if (!isLongEnough(rights[right])) continue;
        longRights_.push_back(static_cast<std::uint32_t>(right));
        if (!kernelRights_.isExact(right)) plainRights_.push_back(static_cast<std::uint32_t>(right));
    }
}

void PairScan::scanPartners(std::size_t left, std::size_t first, std::size_t last, OuterMotif outer,
                            std::vector<ScoredShift>& kept, KernelScratch& scratch) const {
    if (!isLongEnough(lefts_[left])) return;
    const std::vector<std::uint32_t>& unscored = kernelLefts().isExact(left) ? plainRights_ : longRights_;
    const auto scoreExact = [&](std::size_t from, std::size_t to) {
        scoreShifts(kernelLefts(), left, kernelRights_, from, to, cutoffTable_, outer, kept, scratch);
    };
    for (auto right = std::lower_bound(unscored.begin(), unscored.end(), first);
         right != unscored.end() && *right < last; ++right) {
        scoreExact(first, *right);
        appendPlainShifts(strandsOf(lefts_[left]), strandsOf(rights_[*right]), outer, *right, overlap, maxScore,
                          cutoff_, bothWalks, kept);
        first = std::size_t{*right} + 1;
    }
    scoreExact(first, last);
}

ShiftRows scanAllPairs(std::span<const data> motifs, double cutoff) {
    return scanBlock(PairScan(motifs, motifs, cutoff), 0, motifs.size());
}

ShiftRows scanBlock(const PairScan& scan, std::size_t first, std::size_t last) {
    ShiftRows rows(last - first);
#pragma omp parallel
    {
        // Rows are as long as they need to be, however the list grows that they are collected in.
        std::vector<ScoredShift> row;
        KernelScratch scratch;
        // They get shorter towards the end of the block, so they are handed out one by one.
#pragma omp for schedule(dynamic)
        for (std::size_t left = first; left < last; ++left) {
            row.clear();
            scan.scanPartners(left, left + 1, last, OuterMotif::left, row, scratch);
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

ShiftRows scanAgainst(std::span<const data> lefts, std::span<const std::size_t> chosen, std::span<const data> rights,
                      double cutoff) {
    const PairScan scan(lefts, rights, cutoff);
    ShiftRows rows(lefts.size());
#pragma omp parallel
    {
        KernelScratch scratch;
#pragma omp for schedule(dynamic)
        for (const std::size_t left : chosen) {
            scan.scanPartners(left, 0, rights.size(), OuterMotif::left, rows[left], scratch);
        }
    }
    return rows;
}

void reserveRecordsOfPairs(const ShiftRows& rows, std::span<const data> motifs, RecordLists& lists) {
    const std::vector<ListedMotif> listed = listMotifs(motifs);
    lists.resize(motifs.size());
    std::vector<std::size_t> counts(motifs.size());
    for (std::size_t outer = 0; outer < rows.size(); ++outer) {
        for (const ScoredShift& kept : rows[outer]) {
            const PairLengths lengths = lengthsOf(listed[outer], listed[kept.partner]);
            for (const Direction direction : {Direction::forward, Direction::backward}) {
                if ((kept.walks & walkOf(direction)) == 0) continue;
                const int offset = offsetAt(direction, Sliding::left, lengths, kept.shift);
                if (offset >= 0) ++counts[outer];
                if (offset <= 0) ++counts[kept.partner];
            }
        }
    }
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) lists[motif].reserve(counts[motif]);
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

void appendRecordsOfPairs(Direction direction, const ShiftRows& rows, std::span<const data> motifs,
                          RecordLists& lists) {
    const std::vector<ListedMotif> listed = listMotifs(motifs);
    lists.resize(motifs.size());
    // A list holds the records with partners before its motif first, which come from the rows of these partners, then
    // those of its own row. Each thread fills the lists of one block of motifs, walking the rows in their order.
    constexpr std::size_t blockSize = 64;
    const std::size_t blocks = (motifs.size() + blockSize - 1) / blockSize;
    const std::vector<std::size_t> filled = filledRows(rows);
#pragma omp parallel for schedule(dynamic)
    for (std::size_t block = 0; block < blocks; ++block) {
        const std::size_t blockFirst = block * blockSize;
        const std::size_t blockLast = std::min(blockFirst + blockSize, motifs.size());
        for (const std::size_t outer : filled) {
            if (outer >= blockLast) break;
            const auto append = [&](Sliding sliding) {
                return [&, sliding](std::uint32_t inner, std::span<const ScoredShift> shifts) {
                    appendPairRecords(direction, sliding, OuterMotif::left, listed[outer], listed[inner], shifts,
                                      lists[sliding == Sliding::left ? outer : inner]);
                };
            };
            forEachPair(partnersWithin(rows[outer], blockFirst, blockLast), append(Sliding::right));
            if (outer >= blockFirst) forEachPair(rows[outer], append(Sliding::left));
        }
    }
}

void appendRecordsWithPartners(Direction direction, std::span<const ScoredShift> row, ListedMotif left,
                               std::span<const ListedMotif> rights, std::vector<dataCombinedScore>& list) {
    forEachPair(row, [&](std::uint32_t right, std::span<const ScoredShift> shifts) {
        for (const Sliding sliding : {Sliding::left, Sliding::right}) {
            appendPairRecords(direction, sliding, OuterMotif::left, left, rights[right], shifts, list);
        }
    });
}

void appendRecordsAgainst(Direction direction, const ShiftRows& rows, std::span<const data> lefts,
                          std::span<const data> rights, RecordLists& lists) {
    const std::vector<ListedMotif> listedLefts = listMotifs(lefts);
    const std::vector<ListedMotif> listedRights = listMotifs(rights);
    lists.resize(lefts.size());
#pragma omp parallel for schedule(dynamic)
    for (std::size_t left = 0; left < lefts.size(); ++left) {
        appendRecordsWithPartners(direction, rows[left], listedLefts[left], listedRights, lists[left]);
    }
}

}  // namespace varnolix
