#pragma once

#include <string>
#include <string_view>

namespace varnolix {

/// Keeps only the blanks, points and digits of the text.
std::string removeSpecialCharacters(std::string_view text);

}  // namespace varnolix
