#pragma once

#include <optional>
#include <string>

#include "job/downloads/download.h"
#include "job/downloads/reading/source_lines.h"

// Which layout a download has, told by its content.

namespace varnolix::job {

/// Why the text cannot be a file of motifs at all, such as XML or an archive; empty if it can.
std::string reasonAgainstText(std::string_view text);

/// The layout; nothing if no line is like any of them.
std::optional<Layout> detectedLayout(const Lines& lines);

}  // namespace varnolix::job
