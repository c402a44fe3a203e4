#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "run/shared_records.h"

// Pieces of text that several reports share: padded columns, numbers, rules, and the banner.

namespace varnolix {

/// Length of the rules (lines of stars or hyphens) in the text reports.
inline constexpr std::size_t ruleWidth = 196;

/// Appends the text, padded with blanks to the width. A longer text is not cut off.
void appendPadded(std::string& line, std::string_view text, std::size_t width);

/// Appends the number with six decimals. The sign of not-a-number is printed, too.
void appendFixed(std::string& line, double number);

/// The number in the notation of this stream: with six decimals once a matrix has been written to it, and with six
/// significant digits before that.
std::string numberLike(const std::ios_base& stream, double number);

/// The answer "Y" or "N" as the headers print it.
inline const char* yesOrNo(const std::string& answer) {
    return answer == "Y" ? "Yes" : "No";
}

/// How the reports name the version, which CMakeLists.txt sets.
std::string versionText();

/// Product name and version, each on its own line.
std::string bannerText();

/// Writes the text to the stream and clears it, but only if it has grown beyond the size of a buffer.
void flushWhenLarge(std::ostream& stream, std::string& text);

}  // namespace varnolix
