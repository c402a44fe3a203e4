#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Makes reference motifs of the rows of a Transfac collection file: TRANSFAC entries.
/// Fills: DatabaseDatasets.
void readTransfacDBMatrix(const Block& rows);

}  // namespace varnolix
