#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// The text of a download as lines, whatever system it comes from.

namespace varnolix::job {

struct TextLine {
    std::string_view text;  ///< without blanks at both ends
    std::size_t number;     ///< 1-based
};

using Lines = std::vector<TextLine>;

/// The text in UTF-8, without a byte order mark. A text in another encoding is taken as Latin-1.
std::string unifiedText(std::string_view text);

/// All lines, empty ones included. A line ends with a line feed, a carriage return, or both.
/// @param text has to outlive the lines
Lines linesOf(std::string_view text);

/// The text without blanks, and without these characters, at both ends.
std::string_view trimmed(std::string_view text, std::string_view characters = " \t\v\f");

/// Whether the line is a comment, which the layouts that allow them mark with "#".
bool isComment(std::string_view line);

/// As much of the text as a message shows.
std::string shown(std::string_view text);

std::string lowered(std::string_view text);

/// The words from the one at `first` on, joined.
std::string joinedWords(const std::vector<std::string_view>& words, std::size_t first, char between = ' ');

}  // namespace varnolix::job
