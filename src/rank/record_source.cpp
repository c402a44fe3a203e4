#include "rank/record_source.h"

#include <omp.h>

#include <limits>
#include <memory>

#include "rank/alignment_keys.h"
#include "run/record_fields.h"
#include "run/run_limits.h"
#include "scan/pair_scan.h"

namespace varnolix {

namespace {

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
    std::vector<std::size_t> filled;

    RemadeBlocks(std::span<const data> motifs, double cutoff, std::size_t blockSize)
        : lists(motifs, motifs, cutoff), runSize(runSizeOf(blockSize)) {}

    void prepare(std::size_t firstOfBlock, std::size_t lastOfBlock) {
        first = firstOfBlock;
        last = lastOfBlock;
        rows = {};  // freed before the next rows take their memory
        rows = scanBlock(lists.scan, first, last);
        filled = filledRows(rows);
    }

    /// All alignments of a motif of the block, by partner and shift.
    void gather(std::size_t motif, RecordScratch& scratch) const {
        std::vector<ScoredShift>& shifts = scratch.shifts;
        const auto append = [&](const std::vector<ScoredShift>& more) {
            shifts.insert(shifts.end(), more.begin(), more.end());
        };
        const std::size_t firstOfRun = motif - (motif - first) % runSize;
        if (scratch.firstOfRun != firstOfRun) {
            gatherEarlier(rows, filled, first, firstOfRun, std::min(last, firstOfRun + runSize), scratch.earlier);
            scratch.firstOfRun = firstOfRun;
        }
        shifts.clear();
        lists.scan.scanPartners(motif, 0, first, OuterMotif::right, shifts, scratch.kernel);
        append(scratch.earlier[motif - firstOfRun]);
        append(rows[motif - first]);
        lists.scan.scanPartners(motif, last, lists.partners.size(), OuterMotif::left, shifts, scratch.kernel);
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

/// A source that needs no preparation.
template <class ListKeys, class RecordOf>
RecordSource unpreparedSource(ListKeys listKeys, RecordOf recordOf) {
    return {std::numeric_limits<std::size_t>::max() / 2, 1, [](std::size_t, std::size_t) {}, listKeys, recordOf};
}

template <class PartnerID>
RecordSource heldRecords(const RecordLists& lists, PartnerID partnerID) {
    return unpreparedSource(
        [&lists, partnerID](std::size_t motif, RecordScratch& scratch) {
            std::vector<SortKey>& room = scratch.rooms.keys;
            room.clear();
            requireAtMost(lists[motif].size(), mostAlignmentsOfMotif, "records of a motif");
            for (const dataCombinedScore& record : lists[motif]) {
                // The sliding motif is told so that places ascend in both directions: a list is in order as it stands.
                const Sliding ascending = record.direction == Direction::forward ? Sliding::left : Sliding::right;
                room.emplace_back(record.combinedScore,
                                  RecordPlace{record.direction, static_cast<std::uint32_t>(partnerID(record) - 1),
                                              ascending, static_cast<std::uint32_t>(room.size())});
            }
            scratch.keys = room;
        },
        [&lists](std::size_t motif, const RecordScratch&, const SortKey& key) {
            return lists[motif][key.place().alignment];
        });
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
                const RemadeLists& lists = blocks->lists;
                scratch.keys = keysOfMotifFirst(scratch.shifts, lists.motifs[motif], lists.partners, scratch.rooms);
            },
            [blocks](std::size_t motif, const RecordScratch& scratch, const SortKey& key) {
                const RemadeLists& lists = blocks->lists;
                const OuterMotif outer = key.partner() < motif ? OuterMotif::right : OuterMotif::left;
                return recordOfKey(key, scratch.shifts, lists.motifs[motif], lists.partners[key.partner()], outer);
            }};
}

RecordSource remadeCollectionRecords(std::span<const data> motifs, std::span<const data> references, double cutoff) {
    const auto lists = std::make_shared<const RemadeLists>(motifs, references, cutoff);
    return unpreparedSource(
        [lists](std::size_t motif, RecordScratch& scratch) {
            scratch.shifts.clear();
            lists->scan.scanPartners(motif, 0, lists->partners.size(), OuterMotif::left, scratch.shifts,
                                     scratch.kernel);
            scratch.keys = keysOfPairs(scratch.shifts, lists->motifs[motif], lists->partners, scratch.rooms);
        },
        [lists](std::size_t motif, const RecordScratch& scratch, const SortKey& key) {
            return recordOfKey(key, scratch.shifts, lists->motifs[motif], lists->partners[key.partner()],
                               OuterMotif::left);
        });
}

}  // namespace varnolix
