#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Makes reference motifs of the rows of a Uniprobe collection file: headers and rows of values by base.
/// Fills: DatabaseDatasets.
void readUniprobeDBMatrix(const Block& rows);

}  // namespace varnolix
