#include "job/downloads/reading/matrix_rows.h"

#include <algorithm>
#include <cctype>

#include "input/input_block.h"
#include "job/downloads/reading/plain_number.h"

namespace varnolix::job {

namespace {

constexpr std::string_view bases = "ACGT";
constexpr std::string_view bracketsAndBlanks = "[] \t";

char upper(char letter) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
}

bool isLetter(char character) {
    return std::isalpha(static_cast<unsigned char>(character)) != 0;
}

bool isBase(char letter) {
    return letter == 'U' || bases.find(letter) != std::string_view::npos;
}

/// What follows the letter of a row, without the mark between them. Nothing if no row begins like that.
std::optional<std::string_view> behindLetter(std::string_view line) {
    constexpr std::string_view marks = ":|[ \t";
    if (line.empty() || !isLetter(line[0])) return std::nullopt;
    if (line.size() == 1) {
        if (!isBase(upper(line[0]))) return std::nullopt;
        return std::string_view();
    }
    if (marks.find(line[1]) == std::string_view::npos) return std::nullopt;
    line = trimmed(line.substr(1));
    if (!line.empty() && (line[0] == ':' || line[0] == '|')) line.remove_prefix(1);
    return line;
}

std::string listed(std::span<const BaseRow> rows) {
    std::string letters;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (row > 0) letters += ", ";
        letters += rows[row].letter != '\0' ? rows[row].letter : bases[row];
    }
    return letters;
}

std::string lengthsListed(std::span<const BaseRow> rows) {
    std::string lengths;
    for (const BaseRow& row : rows) {
        if (!lengths.empty()) lengths += ", ";
        lengths += std::to_string(row.values.size());
    }
    return lengths;
}

}  // namespace

std::optional<BaseOrder> baseOrder(std::span<const std::string_view> letters) {
    if (letters.size() != bases.size()) return std::nullopt;
    BaseOrder order = {};
    std::array<bool, 4> isNamed = {};
    for (std::size_t place = 0; place < letters.size(); ++place) {
        if (letters[place].size() != 1) return std::nullopt;
        const char letter = upper(letters[place][0]);
        const std::size_t base = bases.find(letter == 'U' ? 'T' : letter);
        if (base == std::string_view::npos || isNamed[base]) return std::nullopt;
        isNamed[base] = true;
        order[base] = place;
    }
    return order;
}

std::optional<BaseOrder> orderOfTableHead(std::string_view line) {
    if (line.size() < 3 || lowered(line.substr(0, 3)) != "pos") return std::nullopt;
    const Row words = splitTokens(line);
    const std::string first = lowered(words[0]);
    if (first != "pos" && first != "position") return std::nullopt;
    return baseOrder(std::span(words).subspan(1));
}

BaseRow baseRowOf(std::string_view line) {
    BaseRow row;
    if (const std::optional<std::string_view> rest = behindLetter(line)) {
        row.letter = upper(line[0]);
        line = *rest;
    }
    row.values = splitTokens(trimmed(line, bracketsAndBlanks));
    return row;
}

bool namesBase(const BaseRow& row) {
    return row.letter != '\0' && isBase(row.letter);
}

std::string columnsOfBaseRows(std::span<const BaseRow> rows, std::vector<NumberColumn>& columns) {
    if (rows.empty()) return "no rows of values";
    if (rows.size() == 1) return "1 row of values, not four";
    if (rows.size() != bases.size()) return std::to_string(rows.size()) + " rows of values, not four";
    std::array<std::string_view, 4> letters;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const char& letter = rows[row].letter != '\0' ? rows[row].letter : bases[row];
        letters[row] = std::string_view(&letter, 1);
    }
    const std::optional<BaseOrder> order = baseOrder(letters);
    if (!order) return "rows " + listed(rows) + ", not A, C, G, T";
    const auto [shortest, longest] = std::minmax_element(
        rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.values.size() < b.values.size(); });
    if (shortest->values.empty()) return "a row without values";
    if (shortest->values.size() != longest->values.size()) {
        return "rows of different length (" + lengthsListed(rows) + ")";
    }
    columns.resize(longest->values.size());
    for (std::size_t position = 0; position < columns.size(); ++position) {
        for (std::size_t base = 0; base < bases.size(); ++base) {
            std::string reason = plainNumber(rows[(*order)[base]].values[position], columns[position][base]);
            if (!reason.empty()) return reason;
        }
    }
    return "";
}

std::string appendPosition(const TextLine& line, std::span<const std::string_view> values, const BaseOrder& order,
                           std::vector<NumberColumn>& columns) {
    if (values.size() != bases.size()) {
        return lineLabel(line.number) + "a position needs four values, not " + std::to_string(values.size());
    }
    NumberColumn column;
    for (std::size_t base = 0; base < bases.size(); ++base) {
        const std::string reason = plainNumber(values[order[base]], column[base]);
        if (!reason.empty()) return lineLabel(line.number) + reason;
    }
    columns.push_back(std::move(column));
    return "";
}

std::string lineLabel(std::size_t line) {
    return "line " + std::to_string(line) + ": ";
}

}  // namespace varnolix::job
