#include "job/tables/table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

namespace varnolix::job {

namespace {

constexpr bool isControl(char c) {
    return (c >= 0 && c < ' ') || c == '\x7f';
}

/// Whether the text is the same in every notation.
bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c >= ' ' && c < '\x7f' && c != '"' && c != '\\'; });
}

/// The text as a JSON string, with its quotes.
std::string jsonString(std::string_view text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

template <class Number>
void appendDigits(std::string& text, Number number) {
    // Long enough for the sign, 17 digits, the point and the exponent.
    std::array<char, 32> digits{};
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), end.ptr);
}

}  // namespace

std::string validUtf8(std::string_view text) {
    if (isPlain(text)) return std::string(text);
    return nlohmann::json::parse(jsonString(text)).get<std::string>();
}

std::vector<std::string> tsvCells(std::string_view line) {
    std::vector<std::string> cells;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find('\t', begin), line.size());
        cells.emplace_back(line.substr(begin, end - begin));
        begin = end + 1;
    }
    return cells;
}

void appendTsvCell(std::string& text, const Cell& cell) {
    if (const auto* words = std::get_if<std::string_view>(&cell)) {
        if (isPlain(*words)) {
            text += *words;
            return;
        }
        std::string line = validUtf8(*words);
        std::replace_if(line.begin(), line.end(), isControl, ' ');
        text += line;
    } else if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
        appendDigits(text, *whole);
    } else if (const auto* number = std::get_if<double>(&cell)) {
        appendDigits(text, *number);
    }
}

void appendJsonValue(std::string& text, const Cell& cell) {
    if (const auto* words = std::get_if<std::string_view>(&cell)) {
        if (isPlain(*words)) {
            text += '"';
            text += *words;
            text += '"';
        } else {
            text += jsonString(*words);
        }
    } else if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
        appendDigits(text, *whole);
    } else if (const auto* number = std::get_if<double>(&cell); number != nullptr && std::isfinite(*number)) {
        appendDigits(text, *number);
    } else {
        text += "null";
    }
}

}  // namespace varnolix::job
