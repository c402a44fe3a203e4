#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Reads one block: four rows of values, for A, C, G, T, one token per position; the name is "NA".
/// Appends the motif to Datasets.
void readMatrixHInput(const Block& rows, int fileIndex);

Matrix matrixOfHorizontalRows(const Block& rows);

}  // namespace varnolix
