#pragma once

namespace varnolix {

/// Writes the distance table of all motifs by their matches across files and the R script, and has R draw the tree.
/// Reads: distanceMatrixGlobal.
void getMotifClusterGlobal();

}  // namespace varnolix
