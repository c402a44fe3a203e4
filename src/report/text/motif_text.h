#pragma once

#include <string>

#include "run/shared_records.h"

namespace varnolix {

/// The rows of a matrix, one line per position, cells 12 wide with six decimals.
std::string matrixRows(const Matrix& matrix);

/// Both matrices of a motif with their consensus sequences.
/// @param reverseTitle the line above the second matrix
std::string matrixBlock(const data& motif, const char* reverseTitle = "Reverse complement motif");

/// The same with the usual title, formatted once per motif and then kept.
/// @param texts one per motif of the list, empty until first asked for
const std::string& keptMatrixBlock(const std::vector<data>& motifs, const data& motif, std::vector<std::string>& texts);

/// Both consensus sequences, a line each.
std::string consensusBlock(const data& motif);

}  // namespace varnolix
