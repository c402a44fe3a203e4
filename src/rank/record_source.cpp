#include "rank/record_source.h"

#include <omp.h>

#include <memory>

#include "scan/pair_records.h"

namespace varnolix {

namespace {

/// What both sources share: the records, and what these need to know about the motifs.
struct ListedRecords {
    PairRecords& records;
    std::vector<ListedMotif> motifs;
    std::vector<ListedMotif> partners;

    explicit ListedRecords(PairRecords& pairs)
        : records(pairs), motifs(listMotifs(pairs.scan->lefts())), partners(listMotifs(pairs.scan->rights())) {}

    MotifAlignments alignmentsOf(const RecordScratch& scratch) const {
        return {scratch.shifts,           motifs[scratch.motif],     partners,
                records.isForwardScanned, records.isBackwardScanned, records.isScored};
    }

    std::span<const ScoredShift> rowOf(std::size_t motif) const { return records.rows[motif - records.first]; }

    void keepBounds(std::size_t motif, const maxScores& bounds) const {
        if (records.bounds != nullptr) (*records.bounds)[motif] = bounds;
    }
};

/// The records between input motifs.
class InputRecords {
  public:
    explicit InputRecords(PairRecords& pairs) : listed_(pairs), runSize_(runSizeOf(pairs.blockSize)) {}

    std::size_t runSize() const { return runSize_; }

    void prepare(std::size_t first) {
        holdBlock(listed_.records, first);
        filled_ = filledRows(listed_.records.rows);
    }

    void listKeys(std::size_t motif, RecordScratch& scratch) const {
        gather(motif, scratch);
        maxScores bounds;
        scratch.keys = keysOfMotifFirst(listed_.alignmentsOf(scratch), bounds, scratch.buffers);
        listed_.keepBounds(motif, bounds);
    }

    dataCombinedScore recordOf(const RecordScratch& scratch, const SortKey& key) const {
        const OuterMotif outer = key.partner() < scratch.motif ? OuterMotif::right : OuterMotif::left;
        return recordOfKey(key, listed_.alignmentsOf(scratch), outer);
    }

  private:
    /// Long runs help the cache; short ones keep all threads busy.
    static std::size_t runSizeOf(std::size_t blockSize) {
        constexpr std::size_t mostInRun = 32;
        constexpr std::size_t runsPerThread = 8;
        const auto threads = static_cast<std::size_t>(omp_get_max_threads());
        return std::clamp<std::size_t>(blockSize / (runsPerThread * threads), 1, mostInRun);
    }

    /// Puts together all alignments of a motif of the block: with the motifs before the block, with the earlier and the
    /// later motifs of the block, and with the motifs after it.
    void gather(std::size_t motif, RecordScratch& scratch) const {
        const PairRecords& records = listed_.records;
        const std::size_t firstOfBlock = records.first;
        const std::size_t endOfBlock = firstOfBlock + records.rows.size();
        const std::size_t firstOfRun = motif - (motif - firstOfBlock) % runSize_;
        if (scratch.firstOfRun != firstOfRun) {
            gatherEarlier(records.rows, filled_, firstOfBlock, firstOfRun, std::min(endOfBlock, firstOfRun + runSize_),
                          scratch.earlier);
            scratch.firstOfRun = firstOfRun;
        }
        std::vector<ScoredShift>& shifts = scratch.gathered;
        const auto append = [&](std::span<const ScoredShift> more) {
            shifts.insert(shifts.end(), more.begin(), more.end());
        };
        shifts.clear();
        records.scan->scanPartners(motif, 0, firstOfBlock, OuterMotif::right, shifts, scratch.kernel);
        append(scratch.earlier[motif - firstOfRun]);
        append(listed_.rowOf(motif));
        records.scan->scanPartners(motif, endOfBlock, listed_.partners.size(), OuterMotif::left, shifts,
                                   scratch.kernel);
        scratch.motif = motif;
        scratch.shifts = shifts;
    }

    ListedRecords listed_;
    std::size_t runSize_;
    std::vector<std::size_t> filled_;  // places of the rows of the block that are not empty
};

/// The records against a collection. Each row already has all alignments of its motif.
class CollectionRecords {
  public:
    explicit CollectionRecords(PairRecords& pairs) : listed_(pairs) {}

    void prepare(std::size_t first) { holdBlock(listed_.records, first); }

    void listKeys(std::size_t motif, RecordScratch& scratch) const {
        scratch.motif = motif;
        scratch.shifts = listed_.rowOf(motif);
        maxScores bounds;
        scratch.keys = keysOfPairs(listed_.alignmentsOf(scratch), bounds, scratch.buffers);
        listed_.keepBounds(motif, bounds);
    }

    dataCombinedScore recordOf(const RecordScratch& scratch, const SortKey& key) const {
        return recordOfKey(key, listed_.alignmentsOf(scratch), OuterMotif::left);
    }

  private:
    ListedRecords listed_;
};

template <class Records>
RecordSource sourceOf(std::shared_ptr<Records> source, std::size_t blockSize, std::size_t runSize) {
    return {blockSize, runSize, [source](std::size_t first) { source->prepare(first); },
            [source](std::size_t motif, RecordScratch& scratch) { source->listKeys(motif, scratch); },
            [source](const RecordScratch& scratch, const SortKey& key) { return source->recordOf(scratch, key); }};
}

}  // namespace

RecordSource inputRecords(PairRecords& records) {
    const auto source = std::make_shared<InputRecords>(records);
    return sourceOf(source, records.blockSize, source->runSize());
}

RecordSource collectionRecords(PairRecords& records) {
    return sourceOf(std::make_shared<CollectionRecords>(records), records.blockSize, 1);
}

}  // namespace varnolix
