#pragma once

#include <vector>

#include "run/shared_records.h"

// The scans of input motifs against the reference collection. The input motif is the outer one of each pair, so it is
// the first motif of a record with primaryFlag "Y" and the second one of the others.

namespace varnolix {

/// Places in Datasets of all motifs.
std::vector<std::size_t> allInputMotifs();

/// Places in Datasets of the motifs that the groups of topGlobalMatchingResults belong to; none with one input file.
std::vector<std::size_t> topGlobalMotifs();

/// Scores the pairs of these input motifs with the collection and appends the forward records; leaves the scored pairs
/// for the backward scan.
void forwardScanAgainst(const std::vector<std::size_t>& inputMotifs, RecordLists& lists);

/// Appends the backward records of the pairs scored last.
void backwardScanAgainst(RecordLists& lists);

}  // namespace varnolix
