#pragma once

#include <string>

#include "run/shared_records.h"

namespace varnolix {

/// The rows of a matrix: one line per position, in cells that are 12 wide with six decimals.
std::string matrixRows(const Matrix& matrix);

/// Both matrices of a motif, each with its consensus sequence.
/// @param reverseTitle the line above the second matrix
std::string matrixBlock(const data& motif, const char* reverseTitle = "Reverse complement motif");

/// The same with the usual title, but formatted only once per motif and then reused.
/// @param motif an element of `motifs`
/// @param texts one per motif, each empty until it is first needed
const std::string& keptMatrixBlock(const std::vector<data>& motifs, const data& motif, std::vector<std::string>& texts);

/// Both consensus sequences, each on its own line.
std::string consensusBlock(const data& motif);

}  // namespace varnolix
