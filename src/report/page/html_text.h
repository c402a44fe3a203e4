#pragma once

#include <string>
#include <string_view>

// Pieces of markup that the pages share. Every piece stands on a line of its own, with its odd blanks.

namespace varnolix {

/// The text with &, <, > and both quotes as entities. Plain texts come out as they are.
std::string escapeHTML(std::string_view text);

/// "<td><font size = '2'>", the content, "</font></td>", a line each.
std::string cell(std::string_view content);

/// A cell whose font element stays open.
std::string cellLeftOpen(std::string_view content);

/// A bold cell of a head row.
std::string headCell(std::string_view content);

/// A table row around its cells.
std::string tableRow(std::string_view cells);

/// A row of two cells, a label and a value.
std::string labelledRow(std::string_view label, std::string_view value);

/// A row with the logos of a motif and of its reverse complement. Pages point to the pictures beside them.
/// @param letter 'M' for input motifs, 'D' for reference motifs
std::string logoRow(char letter, int number);

}  // namespace varnolix
