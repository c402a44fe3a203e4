#include "job/downloads/information.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "input/input_block.h"

namespace varnolix::job {

double informationOf(const NumberColumn& column) {
    const Column probabilities =
        frequencies({parseNumber(column[0]), parseNumber(column[1]), parseNumber(column[2]), parseNumber(column[3])});
    double bits = 2;
    for (const double probability : probabilities) {
        if (std::isnan(probability)) return 0;
        if (probability > 0) bits += probability * std::log2(probability);
    }
    return std::max(bits, 0.0);
}

double informationOf(const DownloadedMotif& motif) {
    double bits = 0;
    for (const NumberColumn& column : motif.columns) bits += informationOf(column);
    return bits;
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
