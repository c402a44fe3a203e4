#pragma once

#include <string>
#include <string_view>

// Paths in the command lines and scripts of the outside tools. Ordinary paths are written as they are, so that users
// recognise the commands; only paths that a tool would misread are quoted.

namespace varnolix {

/// The path as one word of a shell command, in single quotes if the shell would otherwise change it or take it apart. A
/// path that begins with "-" gets "./" in front, so that no tool mistakes it for an option.
std::string shellWord(const std::string& path);

/// The text in single quotes, as one word of a shell command.
std::string singleQuoted(std::string_view text);

/// The path as it is written inside a single-quoted string of PHP or R: backslashes and apostrophes are escaped by a
/// backslash, and a path that begins with "-" gets "./" in front.
std::string insideQuotes(std::string_view path);

}  // namespace varnolix
