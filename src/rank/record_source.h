#pragma once

#include <algorithm>
#include <functional>
#include <span>
#include <vector>

#include "rank/alignment_keys.h"
#include "rank/sort_key.h"
#include "run/shared_records.h"
#include "scan/pair_scan.h"

// Where the ranking gets the records of a motif from: first their keys, in the order in which the scans list the
// records, and then the few records that it keeps. A record that is not kept is never made.
//
// When the ranking comes to a motif, all alignments of the motif are put together. Its bounds and keys follow from
// these alone. Pairs within a block of motifs are scored once, by the scans or when the ranking comes to the block.
// Pairs of motifs of different blocks are scored twice, once for each motif. Tested by record_source_test.cpp.

namespace varnolix {

/// Buffers of one thread for the current motif.
struct RecordScratch {
    std::size_t motif = 0;                ///< place of the motif that the following belong to
    std::span<const ScoredShift> shifts;  ///< its alignments, ordered by partner and shift
    std::span<SortKey> keys;              ///< one for each record; the user may reorder them

    std::vector<ScoredShift> gathered;  ///< memory of `shifts`, if they had to be put together
    KeyBuffers buffers;                 ///< memory of `keys`
    KernelScratch kernel;
    std::size_t firstOfRun = static_cast<std::size_t>(-1);  ///< the run of motifs that `earlier` belongs to
    ShiftRows earlier;  ///< for each motif of the run, its alignments with the motifs before it in the block
};

/// Gives the records of motifs, named by their places in Datasets. Several threads may use it at once, each with its
/// own scratch.
struct RecordSource {
    std::size_t blockSize;  ///< motifs that are prepared together, from a multiple of this number to the next
    std::size_t runSize;    ///< motifs of a block that one thread should take in a row, counted in the same way
    /// Must be called before the keys of a block are listed. Uses all threads.
    std::function<void(std::size_t first)> prepareBlock;
    /// Fills the scratch for a motif of the block.
    std::function<void(std::size_t motif, RecordScratch& scratch)> listKeys;
    /// The record of a key in the scratch.
    std::function<dataCombinedScore(const RecordScratch& scratch, const SortKey& key)> recordOf;
};

/// The records between input motifs that store the motif first.
RecordSource inputRecords(PairRecords& records);

/// The records of each motif with the reference motifs, whichever of the two they store first.
RecordSource collectionRecords(PairRecords& records);

/// Lists the keys of every motif, and then calls use(scratch) for it. The threads share the motifs. Each thread has a
/// Scratch of its own, whose member `records` is a RecordScratch.
template <class Scratch, class Use>
void forEachMotif(const RecordSource& source, std::size_t motifs, Use use) {
    const auto runSize = static_cast<int>(source.runSize);
    for (std::size_t first = 0; first < motifs; first += source.blockSize) {
        const std::size_t last = std::min(motifs, first + source.blockSize);
        source.prepareBlock(first);
#pragma omp parallel
        {
            Scratch scratch;
#pragma omp for schedule(dynamic, runSize)
            for (std::size_t motif = first; motif < last; ++motif) {
                source.listKeys(motif, scratch.records);
                use(scratch);
            }
        }
    }
}

}  // namespace varnolix
