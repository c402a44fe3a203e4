#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Reads one block: a name row (its first character is dropped), then one IUPAC string per row of one token.
/// Appends the motif to Datasets.
void readConsensusInput(const Block& rows, int fileIndex);

Matrix matrixOfIUPAC(const Block& rows);

}  // namespace varnolix
