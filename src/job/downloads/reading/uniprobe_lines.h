#pragma once

#include <string_view>

namespace varnolix::job {

/// Whether the line is a row of a UniPROBE table: one of the letters A, C, G, T, a colon, and the values.
bool isUniprobeRow(std::string_view line);

}  // namespace varnolix::job
