#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "run/shared_records.h"

// The pieces a motif file is cut into, and the steps that all block readers share.

namespace varnolix {

/// The tokens of one line. They point into the text of the file, which the caller owns.
using Row = std::vector<std::string_view>;
/// The rows that make up one motif.
using Block = std::vector<Row>;

/// Splits a line into tokens at blanks and tabs.
Row splitTokens(std::string_view line);

/// Removes blanks, line ends, carriage returns and tabs from the end of the line.
std::string_view stripLineEnd(std::string_view line);

/// Calls `use` for every line of the text, without its line end. If the text ends with a line end, one more, empty line
/// follows.
template <class Use>
void forEachLine(std::string_view text, Use use) {
    while (true) {
        const std::size_t end = text.find('\n');
        use(text.substr(0, end));
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
    }
}

/// Reads the whole file. Returns false if it cannot be opened, or if it is neither a regular file nor a pipe: folders
/// contain no text, and devices may never end. A file that does not fit into memory ends the run.
bool readWholeFile(const std::string& path, std::string& text);

/// The value as strtod reads it; 0 if it is not a number.
double parseNumber(std::string_view token);

/// The four values divided by their sum, which is added up in the order A, C, G, T. A sum of 0 gives not-a-number.
Column frequencies(const Column& values);

/// The frequencies of the four tokens that begin at `first`. The row has to be long enough.
Column frequenciesOfTokens(const Row& row, std::size_t first);

/// Whether the four tokens that begin at `first` consist of digits and points only. The row has to be long enough.
bool fourNumeric(const Row& row, std::size_t first);

/// The token without its first character; "NA" if nothing is left.
std::string nameOrNA(std::string_view token);

/// Turns rows of values, one per base, into positions. The A row decides how many; missing values count as 0.
Matrix positionsFromBaseRows(const std::array<std::vector<double>, 4>& rows);

/// Fills the fields derived from `matrix`: the reverse complement and both consensus strings.
void deriveForms(data& motif);

/// Finishes the motif of a block: fills the work record Matrices with the name and the matrix, numbers the motif,
/// appends it to Datasets, and advances mNum and matrixIDNum. Also updates the motif count of FileNameType[fileIndex].
void appendMotif(std::string name, Matrix matrix, int fileIndex);

}  // namespace varnolix
