#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace varnolix::job {

enum class Linkage : std::uint8_t { average, complete, single };

/// A step of the tree, as R's hclust has it: a negative number is that of a motif, -(place + 1), a positive one that of
/// an earlier step, counted from 1.
struct TreeMerge {
    int left = 0;
    int right = 0;
    double height = 0.0;
};

}  // namespace varnolix::job
