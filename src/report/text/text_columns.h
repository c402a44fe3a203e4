#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "run/shared_records.h"

// Pieces of text that several reports share: padded columns, numbers, rules, the banner.

namespace varnolix {

/// Width of the rules of the text reports.
inline constexpr std::size_t ruleWidth = 196;

/// Appends the text and blanks up to the width; a longer text runs over.
void appendPadded(std::string& line, std::string_view text, std::size_t width);

/// Appends the number with six decimals. Not-a-number keeps its sign.
void appendFixed(std::string& line, double number);

/// The number as this stream prints it: with six decimals once a matrix has been written to it, else with six
/// significant digits.
std::string numberLike(const std::ios_base& stream, double number);

/// How the headers show an answer of "Y" or "N".
inline const char* yesOrNo(const std::string& answer) {
    return answer == "Y" ? "Yes" : "No";
}

/// How the reports name the version, which CMakeLists.txt sets.
std::string versionText();

/// Product name and version, each on a line.
std::string bannerText();

/// Writes the text out and empties it once it has grown past a buffer's size.
void flushWhenLarge(std::ostream& stream, std::string& text);

}  // namespace varnolix
