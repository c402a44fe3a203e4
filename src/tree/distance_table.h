#pragma once

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "run/shared_records.h"

namespace varnolix {

/// Pairs of so many motifs: the cells of one half of a table that is the same both ways, without its diagonal.
constexpr std::size_t pairsOf(std::size_t motifs) {
    return motifs == 0 ? 0 : motifs * (motifs - 1) / 2;
}

/// The cell of two different motifs, told by their places from 0, in either order. Rows of the lower half, one after
/// the other.
constexpr std::size_t pairCell(std::size_t motif, std::size_t other) {
    return pairsOf(std::max(motif, other)) + std::min(motif, other);
}

/// A cell of a table of comma-separated values: as it is where it can be, else in double quotes.
std::string csvCell(std::string_view text);

/// Writes the table with a label row and a label column: the letter, the number of the motif, "_" and its name. A cell
/// is the lowest combinedScore of the pair in either order, with six significant digits; the value of the table for
/// pairs without a record; and 0 on the diagonal. Every cell is followed by a comma, also the last one of a row, as the
/// script that reads it expects.
void writeDistanceTable(std::ostream& stream, const DistanceTable& table, char letter);

}  // namespace varnolix
