#include "tree/distance_table.h"

#include <algorithm>
#include <cmath>

#include "report/text_columns.h"
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
    std::string text = ",";
    for (std::size_t column = 0; column < count; ++column) text += label(column) + ",";
    text += '\n';
    for (std::size_t row = 0; row < count; ++row) {
        text += label(row) + ",";
        for (std::size_t column = 0; column < count; ++column) {
            const double lowest =
                std::min(table.lowestScores[row * count + column], table.lowestScores[column * count + row]);
            if (row == column) {
                text += '0';
            } else if (std::isfinite(lowest)) {
                text += numberToString(lowest);
            } else {
                text += unmatched;
            }
            text += ',';
        }
        text += '\n';
        flushWhenLarge(stream, text);
    }
    stream << text;
}

}  // namespace varnolix
