#include "input/removeSpecialCharacters.h"

#include <algorithm>
#include <iterator>

namespace varnolix {

std::string removeSpecialCharacters(std::string_view text) {
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](char c) { return c == ' ' || c == '.' || (c >= '0' && c <= '9'); });
    return kept;
}

}  // namespace varnolix
