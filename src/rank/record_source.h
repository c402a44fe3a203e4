#pragma once

#include <algorithm>
#include <functional>
#include <span>
#include <vector>

#include "rank/alignment_keys.h"
#include "rank/sort_key.h"
#include "run/shared_records.h"
#include "scan/pair_scan.h"

// Where the ranking gets the records of a motif from: first their keys, in the order of one thread, and then the few
// records that it keeps.
//
// Small runs hold all records, in the lists that the scans filled. A run whose records would take more than a small
// share of the machine's memory never does: the alignments of one motif with all others are laid together when the
// ranking comes to it, the keys follow from them, and only a record that is kept is ever made. The motif's bounds come
// from the same alignments, so nothing is needed from other motifs. Alignments are a fifth of the size of their
// records, so those within a block of motifs are kept, as many as another share of the memory takes, and each of these
// pairs is scored once. Pairs of motifs of different blocks are scored twice, once for each motif. The records kept,
// and so all output, are the same. Tested by record_source_test.cpp.

namespace varnolix {

/// Scratch of one thread: what the motif under work has.
struct RecordScratch {
    std::vector<ScoredShift> shifts;  ///< where records are made anew: the alignments of the motif
    std::span<SortKey> keys;          ///< one a record; may be put into another order
    KeyRooms rooms;                   ///< where the keys lie
    std::size_t firstOfRun = static_cast<std::size_t>(-1);  ///< the run of motifs that the next lists belong to
    KernelScratch kernel;
    ShiftRows earlier;  ///< for each motif of the run, its alignments with the motifs before it in the block
};

/// Gives the records of motifs, told by their places in Datasets. May be used by several threads at once, each with a
/// scratch of its own.
struct RecordSource {
    std::size_t blockSize;  ///< motifs that are prepared together, from a multiple of this number to the next
    std::size_t runSize;    ///< motifs of a block that one thread had best take one after the other, counted likewise
    /// To be called before the keys of the motifs first .. last - 1, a block, are listed; shared out among the threads.
    std::function<void(std::size_t first, std::size_t last)> prepareBlock;
    /// Fills the keys of the scratch. A key's partner is the place of the other motif in its list.
    std::function<void(std::size_t motif, RecordScratch& scratch)> listKeys;
    /// The record of a key of the motif listed last.
    std::function<dataCombinedScore(std::size_t motif, const RecordScratch& scratch, const SortKey& key)> recordOf;
};

/// The records between input motifs that the scans stored, grouped by the motif stored first.
RecordSource heldInputRecords(const RecordLists& lists);

/// The records against the collection that the scans stored, grouped by input motif.
RecordSource heldCollectionRecords(const RecordLists& lists);

/// The records between input motifs that store the motif first, made anew. The motifs must outlive the source.
/// @param blockSize motifs whose alignments among themselves are kept at a time
RecordSource remadeInputRecords(std::span<const data> motifs, double cutoff, std::size_t blockSize);

/// The records of the motif with the reference motifs, whichever of the two they store first, made anew. Motifs and
/// references must outlive the source.
RecordSource remadeCollectionRecords(std::span<const data> motifs, std::span<const data> references, double cutoff);

/// Lists the keys of every motif and calls use(motif, scratch) for it, the motifs shared out among the threads. A
/// Scratch belongs to one thread and has its RecordScratch as `records`.
template <class Scratch, class Use>
void forEachMotif(const RecordSource& source, std::size_t motifs, Use use) {
    const auto runSize = static_cast<int>(source.runSize);
    for (std::size_t first = 0; first < motifs; first += source.blockSize) {
        const std::size_t last = std::min(motifs, first + source.blockSize);
        source.prepareBlock(first, last);
#pragma omp parallel
        {
            Scratch scratch;
#pragma omp for schedule(dynamic, runSize)
            for (std::size_t motif = first; motif < last; ++motif) {
                source.listKeys(motif, scratch.records);
                use(motif, scratch);
            }
        }
    }
}

}  // namespace varnolix
