#pragma once

#include "input/input_block.h"

namespace varnolix {

/// Reads one block: a line of tag and name, then lines of 5 or 6 tokens: position number, A, C, G, T and
/// an optional letter; other lines are skipped.
/// Appends the motif to Datasets.
void readTransfacInput(const Block& rows, int fileIndex);

/// True for a line of 5 or 6 tokens whose tokens 2 to 5 hold only digits and points.
bool isTransfacPosition(const Row& row);

/// The positions among the lines, in their order.
Matrix matrixOfTransfacLines(std::span<const Row> rows);

}  // namespace varnolix
