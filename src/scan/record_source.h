#pragma once

#include <functional>
#include <span>
#include <vector>

#include "run/shared_records.h"
#include "scan/pair_scan.h"

// Where the ranking gets the records of a motif from, each with its combinedScore.
//
// Most runs hold all records, in lists that the scans filled. A run whose records would take too much of the machine's
// memory never does: the records of one motif are made when the ranking comes to it, from the alignments of the motif
// with all others, and go again. The motif's bounds come from the same alignments, so nothing is needed from other
// motifs. Each pair of input motifs is then scored twice, once for each of them; the records, and so all output, are
// the same. Tested by record_source_test.cpp.

namespace varnolix {

/// Scratch of one thread.
struct RecordScratch {
    std::vector<ScoredShift> shifts;
    std::vector<dataCombinedScore> records;
};

/// Gives the records of the motif at this place of Datasets, in the order of one thread. They may lie in the scratch,
/// and then live until its next use. May be called from several threads at once.
using RecordSource = std::function<std::span<const dataCombinedScore>(std::size_t motif, RecordScratch& scratch)>;

/// The records that the scans stored.
RecordSource heldRecords(const RecordLists& lists);

/// The records between input motifs that store the motif first, made anew. The motifs must outlive the source.
RecordSource remadeInputRecords(std::span<const data> motifs, double cutoff);

/// The records of the motif with the reference motifs, whichever of the two they store first, made anew. Motifs and
/// references must outlive the source.
RecordSource remadeCollectionRecords(std::span<const data> motifs, std::span<const data> references, double cutoff);

}  // namespace varnolix
