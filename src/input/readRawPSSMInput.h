#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Reads one block: a name row (its first character is dropped), then one position per row, A C G T;
/// any row that is not four numbers is skipped.
/// Appends the motif to Datasets.
void readRawPSSMInput(const Block& rows, int fileIndex);

Matrix matrixOfNumericRows(const Block& rows);

}  // namespace varnolix
