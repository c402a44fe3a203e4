#pragma once

#include <string>
#include <string_view>

namespace varnolix {

/// The text with only its blanks, points and digits left.
std::string removeSpecialCharacters(std::string_view text);

}  // namespace varnolix
