#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "run/shared_records.h"

namespace varnolix {

/// The text as a cell of comma-separated values, in double quotes if it needs them.
std::string csvCell(std::string_view text);

/// Writes the table with a row and a column of labels; a label is the letter, the number of the motif, "_" and its
/// name. A cell is the lowest combinedScore of the pair, with six significant digits, or `unmatched` for a pair without
/// a record, or 0 on the diagonal. Every cell is followed by a comma, even the last one of a row, because the script
/// that reads the table expects it.
void writeDistanceTable(std::ostream& stream, const DistanceTable& table, char letter);

}  // namespace varnolix
