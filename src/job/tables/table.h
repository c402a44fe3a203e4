#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// The form of the tables that other programs read. A table is a list of columns; each knows its name, what stands in it
// and how its cell is taken from a row. Header, TSV, JSON and the manual page follow from this list.

namespace varnolix::job {

/// What stands in a cell: a text, a whole number, a number with a fraction, or nothing.
using Cell = std::variant<std::string_view, std::int64_t, double, std::monostate>;

/// How a column is described to users.
struct ColumnNote {
    const char* name;
    const char* meaning;
    const char* range;  ///< values that may stand there; for numbers also what they count from
};

/// A column of a table. The cell may point into the row.
template <class Row>
struct TableColumn {
    ColumnNote note;
    Cell (*cell)(const Row& row);
};

/// The text as UTF-8: bytes that are none become the replacement character.
std::string validUtf8(std::string_view text);

/// The cells of a line of a table; a line always has one, if only an empty one.
std::vector<std::string> tsvCells(std::string_view line);

/// Appends the cell as it stands between two tabs. Numbers have as many digits as it takes to read the same number
/// back. In texts, every tab, line end and other control character becomes a blank; nothing is quoted.
void appendTsvCell(std::string& text, const Cell& cell);

/// Appends the cell as a JSON value. Nothing, and a number that JSON cannot write, become `null`.
void appendJsonValue(std::string& text, const Cell& cell);

template <class Columns>
void appendTsvHeader(std::string& text, const Columns& columns) {
    const char* before = "";
    for (const auto& column : columns) {
        text += before;
        text += column.note.name;
        before = "\t";
    }
    text += '\n';
}

template <class Columns, class Row>
void appendTsvRow(std::string& text, const Columns& columns, const Row& row) {
    const char* before = "";
    for (const auto& column : columns) {
        text += before;
        appendTsvCell(text, column.cell(row));
        before = "\t";
    }
    text += '\n';
}

/// Appends the row as an object, without a line end.
template <class Columns, class Row>
void appendJsonRow(std::string& text, const Columns& columns, const Row& row) {
    const char* before = "{\"";
    for (const auto& column : columns) {
        text += before;
        text += column.note.name;
        text += "\":";
        appendJsonValue(text, column.cell(row));
        before = ",\"";
    }
    text += '}';
}

/// The whole table as TSV.
template <class Columns, class Rows>
std::string tsvText(const Columns& columns, const Rows& rows) {
    std::string text;
    appendTsvHeader(text, columns);
    for (const auto& row : rows) appendTsvRow(text, columns, row);
    return text;
}

}  // namespace varnolix::job
