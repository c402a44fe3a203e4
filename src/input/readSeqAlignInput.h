#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Reads one block: a name row (its first character is dropped), then aligned sequences of one length; gaps
/// count for no base.
/// Appends the motif to Datasets.
void readSeqAlignInput(const Block& rows, int fileIndex);

Matrix matrixOfAlignment(const Block& rows);

}  // namespace varnolix
