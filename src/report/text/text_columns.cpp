#include "report/text/text_columns.h"

#include <array>
#include <charconv>
#include <limits>

#include "run/run_text.h"

namespace varnolix {

void appendPadded(std::string& line, std::string_view text, std::size_t width) {
    line += text;
    if (text.size() < width) line.append(width - text.size(), ' ');
}

void appendFixed(std::string& line, double number) {
    constexpr int decimals = 6;
    std::array<char, std::numeric_limits<double>::max_exponent10 + decimals + 8> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed, decimals).ptr;
    line.append(buffer.data(), end);
}

std::string numberLike(const std::ios_base& stream, double number) {
    if ((stream.flags() & std::ios_base::floatfield) != std::ios_base::fixed) return numberToString(number);
    std::string text;
    appendFixed(text, number);
    return text;
}

std::string versionText() {
    return "Version " VARNOLIX_VERSION;
}

std::string bannerText() {
    return "VARNOLIX - Matrix Kinship Finder\n" + versionText() + "\n";
}

void flushWhenLarge(std::ostream& stream, std::string& text) {
    constexpr std::size_t bufferSize = std::size_t{1} << 20;
    if (text.size() < bufferSize) return;
    stream << text;
    text.clear();
}

}  // namespace varnolix
