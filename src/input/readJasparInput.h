#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Reads one block: a row with the name behind ">", then the rows of A, C, G, T with or without brackets.
/// Appends the motif to Datasets.
void readJasparInput(const Block& rows, int fileIndex);

Matrix matrixOfJasparRows(const Block& rows);

/// The values of a row that begins with its base: brackets and other odd characters are dropped.
std::vector<double> jasparRowValues(const Row& row);

}  // namespace varnolix
