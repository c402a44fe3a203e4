#pragma once

#include <functional>
#include <span>
#include <vector>

#include "rank/sorted_walk.h"
#include "run/shared_records.h"

// Where the ranking gets the records of a motif from: first their keys, in the order of one thread, and then the few
// records that it keeps.
//
// Small runs hold all records, in the lists that the scans filled. A run whose records would take more than a small
// share of the machine's memory never does: the alignments of one motif with all others are scored when the ranking
// comes to it, the keys follow from them, and only a record that is kept is ever made. The motif's bounds come from the
// same alignments, so nothing is needed from other motifs. Each pair of input motifs is then scored twice, once for
// each of them, which costs no more than writing tens of millions of records to memory and reading them again. The
// records kept, and so all output, are the same. Tested by record_source_test.cpp.

namespace varnolix {

/// Scratch of one thread: what the motif under work has.
struct RecordScratch {
    std::vector<ScoredShift> shifts;  ///< where records are made anew: the alignments of the motif
    std::vector<double> shiftKeys;    ///< one an alignment
    std::vector<SortKey> keys;        ///< one a record; may be put into another order
    std::vector<SortKey> backwardKeys;
};

/// Gives the records of motifs, told by their places in Datasets. May be used by several threads at once, each with a
/// scratch of its own.
struct RecordSource {
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
RecordSource remadeInputRecords(std::span<const data> motifs, double cutoff);

/// The records of the motif with the reference motifs, whichever of the two they store first, made anew. Motifs and
/// references must outlive the source.
RecordSource remadeCollectionRecords(std::span<const data> motifs, std::span<const data> references, double cutoff);

}  // namespace varnolix
