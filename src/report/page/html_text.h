#pragma once

#include <string>
#include <string_view>

// Pieces of markup that the pages share. Each begins on a line of its own. Odd blanks are part of the format.

namespace varnolix {

/// The text with &, <, > and both kinds of quotes replaced by entities.
std::string escapeHTML(std::string_view text);

/// A table cell: "<td><font size = '2'>", the content, "</font></td>", each on its own line.
std::string cell(std::string_view content);

/// A cell whose font element is not closed.
std::string cellLeftOpen(std::string_view content);

/// A bold cell for column titles.
std::string headCell(std::string_view content);

/// A table row around its cells.
std::string tableRow(std::string_view cells);

/// A row of two cells: a label and a value.
std::string labelledRow(std::string_view label, std::string_view value);

/// A row with the logos of a motif and of its reverse complement. The page refers to the picture files next to it.
/// @param letter 'M' for input motifs, 'D' for reference motifs
std::string logoRow(char letter, int number);

}  // namespace varnolix
