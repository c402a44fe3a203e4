#pragma once

namespace varnolix {

/// Stores the mirrored alignments: the last column of the sliding motif on each column from the end of the fixed one.
/// Every one of them lays the two motifs on each other as an offset of the forward scan does, so nothing is scored
/// here. Reads: scannedPairs (and empties it), Datasets. Appends to: DatasetsCombinedScoreLists, behind the forward
/// records.
void backwardScan();

}  // namespace varnolix
