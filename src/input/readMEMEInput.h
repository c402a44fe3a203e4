#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Reads one block: the matrix section of a MEME report; rows that are not four numbers are skipped, titles and
/// dashes among them; the name is "Motif" and the id of the motif in the run.
/// Appends the motif to Datasets.
void readMEMEInput(const Block& rows, int fileIndex);

}  // namespace varnolix
