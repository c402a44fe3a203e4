#include "job/downloads/information.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "input/input_block.h"

namespace varnolix::job {

double informationOf(const Column& frequencies) {
    double bits = 2;
    for (const double probability : frequencies) {
        if (std::isnan(probability)) return 0;
        if (probability > 0) bits += probability * std::log2(probability);
    }
    return std::max(bits, 0.0);
}

double informationOf(const NumberColumn& column) {
    return informationOf(
        frequencies({parseNumber(column[0]), parseNumber(column[1]), parseNumber(column[2]), parseNumber(column[3])}));
}

double informationOf(const Matrix& matrix) {
    double bits = 0;
    for (const Column& column : matrix) bits += informationOf(column);
    return bits;
}

double informationOf(const DownloadedMotif& motif) {
    double bits = 0;
    for (const NumberColumn& column : motif.columns) bits += informationOf(column);
    return bits;
}

std::string columnsWithoutCounts(const DownloadedMotif& motif) {
    std::string numbers;
    for (std::size_t column = 0; column < motif.columns.size(); ++column) {
        const NumberColumn& values = motif.columns[column];
        const bool isEmpty =
            std::all_of(values.begin(), values.end(), [](const std::string& value) { return parseNumber(value) == 0; });
        if (isEmpty) numbers += (numbers.empty() ? "" : ", ") + std::to_string(column + 1);
    }
    return numbers;
}

TrimmedFlanks trimFlanks(DownloadedMotif& motif, double bits) {
    std::vector<NumberColumn>& columns = motif.columns;
    const auto isEnough = [bits](const NumberColumn& column) { return informationOf(column) >= bits; };
    const auto first = std::find_if(columns.begin(), columns.end(), isEnough);
    if (first == columns.end()) return {0, 0, true};
    const auto end = std::find_if(columns.rbegin(), columns.rend(), isEnough).base();
    const TrimmedFlanks trimmed = {static_cast<std::size_t>(first - columns.begin()),
                                   static_cast<std::size_t>(columns.end() - end), false};
    columns.erase(end, columns.end());
    columns.erase(columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(trimmed.left));
    return trimmed;
}

}  // namespace varnolix::job
