#include "tree/distance_table.h"

#include <cmath>

#include "report/text/text_columns.h"
#include "run/run_text.h"

namespace varnolix {

std::string csvCell(std::string_view text) {
    if (text.find_first_of(",\"\n\r") == std::string_view::npos) return std::string(text);
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + "\"";
}

void writeDistanceTable(std::ostream& stream, const DistanceTable& table, char letter) {
    const std::size_t count = table.labels.size();
    const auto label = [&](std::size_t motif) {
        return csvCell(letter + std::to_string(motif + 1) + "_" + table.labels[motif]);
    };
    const std::string unmatched = numberToString(table.unmatched);
    const auto cell = [&](std::size_t row, std::size_t column) {
        const double lowest = table.lowestScores[pairCell(row, column)];
        return std::isfinite(lowest) ? numberToString(lowest) : unmatched;
    };
    std::string text = ",";
    for (std::size_t column = 0; column < count; ++column) text += label(column) + ",";
    text += '\n';
    for (std::size_t row = 0; row < count; ++row) {
        text += label(row) + ",";
        for (std::size_t column = 0; column < count; ++column) {
            text += row == column ? "0" : cell(row, column);
            text += ',';
        }
        text += '\n';
        flushWhenLarge(stream, text);
    }
    stream << text;
}

}  // namespace varnolix
