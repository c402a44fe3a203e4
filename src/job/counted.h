#pragma once

#include <cstddef>
#include <string>

namespace varnolix::job {

/// "1 motif", "2 motifs".
inline std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace varnolix::job
