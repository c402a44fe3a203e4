#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Reads one block: one position per row, A C G T; rows of another token count are skipped; the name is "NA".
/// Appends the motif to Datasets.
void readMatrixVInput(const Block& rows, int fileIndex);

Matrix matrixOfVerticalRows(const Block& rows);

}  // namespace varnolix
