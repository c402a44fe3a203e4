#pragma once

namespace varnolix {

/// Writes the distance table of all motifs and the R script, and has R draw the tree.
/// Reads: distanceMatrix.
void getMotifCluster();

}  // namespace varnolix
