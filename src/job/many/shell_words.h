#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnolix::job {

/// The words of a text as a shell tells them apart: blanks separate words, unless they stand in '...' or "..." or
/// behind a backslash. Nothing is expanded. Nothing if a quotation is not closed or the last character is a backslash.
std::optional<std::vector<std::string>> shellWords(std::string_view text);

}  // namespace varnolix::job
