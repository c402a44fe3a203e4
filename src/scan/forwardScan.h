#pragma once

namespace varnolix {

/// Scores every pair of input motifs at every offset, in both regions, and stores the alignments at or above the
/// cutoff. Reads: Datasets, overlap, maxScore, simCutoff. Appends to: DatasetsCombinedScoreLists. Leaves the scored
/// pairs in scannedPairs for backwardScan. Motifs with fewer columns than overlap take part in no pair.
void forwardScan();

}  // namespace varnolix
