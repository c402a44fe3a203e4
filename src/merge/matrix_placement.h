#pragma once

#include <optional>

#include "run/shared_records.h"

// How two aligned matrices lie on one axis. The drawing and the merging share this, so that the lines of the reports
// agree with the merged matrix.

namespace varnolix {

/// Lengths of the two matrices and what a record says of their alignment.
struct PairAlignment {
    int length1;
    int length2;
    PrimaryFlag primaryFlag;
    Direction direction;
    int position;
    int overlap;

    /// Columns of the axis.
    int total() const { return length1 + length2 - overlap; }
};

/// How far each matrix is moved from the edge: the left one in a forward alignment, the right one in a backward one.
struct Shifts {
    int first;
    int second;
};

/// A position below 2 moves none. Where the axis is as long as the longer matrix, the shorter one is moved; where it is
/// longer than both, the first one with the primary flag, else the second. Nothing for an axis shorter than a matrix.
std::optional<Shifts> shiftsOf(const PairAlignment& alignment);

/// First column on an axis of what is `length` columns long and moved by `shift`; below 0 where it sticks out.
constexpr int firstColumn(Direction direction, int axis, int length, int shift) {
    return direction == Direction::forward ? shift : axis - length - shift;
}

}  // namespace varnolix
