#pragma once

#include <string>
#include <string_view>

// Paths inside the command lines and scripts of the outside tools. Plain paths stand there bare, as users know the
// commands; only those that the tool would take apart are quoted.

namespace varnolix {

/// A word of a shell command: as it is if the shell takes it whole, else in single quotes. A path that begins with "-"
/// gets "./" in front, so that no tool takes it for an option.
std::string shellWord(const std::string& path);

/// The path as the inside of a single-quoted string of PHP or R: backslashes and apostrophes get a backslash in front,
/// a path that begins with "-" gets "./".
std::string insideQuotes(std::string_view path);

}  // namespace varnolix
