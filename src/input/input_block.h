#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "run/shared_records.h"

// What a motif file is cut into, and the steps that all readers of blocks share.

namespace varnolix {

/// Tokens of one line. The text is owned by whoever read the file.
using Row = std::vector<std::string_view>;
/// The rows that make one motif.
using Block = std::vector<Row>;

/// The tokens of a line, cut at blanks and tabs.
Row splitTokens(std::string_view line);

/// The line without the blanks, line ends, carriage returns and tabs at its end.
std::string_view stripLineEnd(std::string_view line);

/// Calls `use` for every line of the text without its line end. A text that ends in a line end has one more, empty,
/// line.
template <class Use>
void forEachLine(std::string_view text, Use use) {
    while (true) {
        const std::size_t end = text.find('\n');
        use(text.substr(0, end));
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
    }
}

/// The whole file. False if it cannot be opened, or is neither a regular file nor a pipe: folders hold no text, devices
/// may never end. One that does not fit the memory ends the run.
bool readWholeFile(const std::string& path, std::string& text);

/// The value as strtod reads it; 0 where it cannot.
double parseNumber(std::string_view token);

/// The four values divided by their sum, added up in the order A, C, G, T. A sum of 0 gives not-a-number.
Column frequencies(const Column& values);

/// The column of a row of tokens, from the token `first` on.
Column frequenciesOfTokens(const Row& row, std::size_t first);

/// True when the four tokens from `first` on hold only digits and points.
bool fourNumeric(const Row& row, std::size_t first);

/// The name behind the first character of the token, "NA" if nothing is left.
std::string nameOrNA(std::string_view token);

/// Rows of values by base turned into positions: as many as the A row has values, missing values counting 0.
Matrix positionsFromBaseRows(const std::array<std::vector<double>, 4>& rows);

/// Fills the forms derived from `matrix`: reverse complement and both consensus strings.
void deriveForms(data& motif);

/// Finishes the motif of a block: fills the work record Matrices from name and matrix, numbers it, appends it to
/// Datasets and raises mNum and matrixIDNum. Sets the motif count of FileNameType[fileIndex].
void appendMotif(std::string name, Matrix matrix, int fileIndex);

}  // namespace varnolix
