#pragma once

#include <optional>
#include <string_view>

#include "job/downloads/download.h"

// The names of the layouts, as `--layout` and the messages have them.

namespace varnolix::job {

/// The layout of that name; nothing if there is none.
std::optional<Layout> layoutOf(std::string_view name);

/// The name of the layout.
const char* nameOf(Layout layout);

}  // namespace varnolix::job
