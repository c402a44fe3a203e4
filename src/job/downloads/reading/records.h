#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "job/downloads/reading/source_lines.h"

// Files cut into records: a ">" line and what follows, or, where there is no such line, blocks between empty lines.

namespace varnolix::job {

struct Record {
    bool hasHeader = false;
    std::string_view header;  ///< without ">"
    std::size_t line = 0;     ///< where the record begins
    Lines body;               ///< without empty lines and comments
};

/// The records of the file. Lines before the first ">" are a record without a header.
std::vector<Record> recordsOf(const Lines& lines);

}  // namespace varnolix::job
