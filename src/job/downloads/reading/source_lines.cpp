#include "job/downloads/reading/source_lines.h"

#include <algorithm>
#include <cctype>

namespace varnolix::job {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// How many bytes the character has that begins with this byte; 0 if none does.
std::size_t bytesOfCharacter(unsigned char first) {
    if (first < 0x80U) return 1;
    if (first >= 0xC2U && first < 0xE0U) return 2;
    if (first >= 0xE0U && first < 0xF0U) return 3;
    if (first >= 0xF0U && first < 0xF5U) return 4;
    return 0;
}

bool isUTF8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = bytesOfCharacter(static_cast<unsigned char>(text[at]));
        if (length == 0 || at + length > text.size()) return false;
        const std::string_view rest = text.substr(at + 1, length - 1);
        if (!std::all_of(rest.begin(), rest.end(), isContinuation)) return false;
        at += length;
    }
    return true;
}

std::string fromLatin1(std::string_view text) {
    std::string unified;
    unified.reserve(text.size() + text.size() / 8);
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80U) {
            unified += character;
            continue;
        }
        unified += static_cast<char>(0xC0U | (byte >> 6U));
        unified += static_cast<char>(0x80U | (byte & 0x3FU));
    }
    return unified;
}

}  // namespace

std::string unifiedText(std::string_view text) {
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    return isUTF8(text) ? std::string(text) : fromLatin1(text);
}

Lines linesOf(std::string_view text) {
    Lines lines;
    lines.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
    std::size_t number = 1;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        lines.push_back({trimmed(text.substr(0, end)), number++});
        text.remove_prefix(end);
        if (text.starts_with("\r\n")) {
            text.remove_prefix(2);
        } else if (!text.empty()) {
            text.remove_prefix(1);
        }
    }
    return lines;
}

std::string_view trimmed(std::string_view text, std::string_view characters) {
    const std::size_t from = text.find_first_not_of(characters);
    if (from == std::string_view::npos) return {};
    return text.substr(from, text.find_last_not_of(characters) - from + 1);
}

bool isComment(std::string_view line) {
    return line.starts_with('#');
}

std::string shown(std::string_view text) {
    constexpr std::size_t most = 40;
    if (text.size() <= most) return std::string(text);
    std::size_t size = most;
    while (size > 0 && isContinuation(text[size])) --size;
    return std::string(text.substr(0, size)) + "...";
}

std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return lower;
}

std::string joinedWords(const std::vector<std::string_view>& words, std::size_t first, char between) {
    std::string text;
    for (std::size_t word = first; word < words.size(); ++word) {
        if (word > first) text += between;
        text += words[word];
    }
    return text;
}

}  // namespace varnolix::job
