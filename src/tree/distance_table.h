#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "run/shared_records.h"

namespace varnolix {

/// A cell of a table of comma-separated values: as it is where it can be, else in double quotes.
std::string csvCell(std::string_view text);

/// Writes the table with a label row and a label column: the letter, the number of the motif, "_" and its name. A cell
/// is the lowest combinedScore of the pair in either order, with six significant digits; the value of the table for
/// pairs without a record; and 0 on the diagonal. Every cell is followed by a comma, also the last one of a row, as the
/// script that reads it expects.
void writeDistanceTable(std::ostream& stream, const DistanceTable& table, char letter);

}  // namespace varnolix
