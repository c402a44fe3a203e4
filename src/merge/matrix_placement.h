#pragma once

#include <optional>

#include "run/shared_records.h"

// Places two aligned matrices on one axis. Drawing and merging share this code, so that the lines in the reports agree
// with the merged matrix.

namespace varnolix {

/// The lengths of the two matrices, and their alignment as a record describes it.
struct PairAlignment {
    int length1;
    int length2;
    PrimaryFlag primaryFlag;
    Direction direction;
    int position;  ///< 1-based
    int overlap;

    /// Number of columns of the axis.
    int total() const { return length1 + length2 - overlap; }
};

/// How far each matrix is moved away from the edge: the left edge in a forward alignment, else the right edge.
struct Shifts {
    int first;
    int second;
};

/// A position below 2 moves neither. If the axis is as long as the longer matrix, the shorter one is moved. If it is
/// longer than both, the primary flag decides: `yes` moves the first one, else the second one is moved. Nothing if the
/// axis is shorter than one of the matrices.
std::optional<Shifts> shiftsOf(const PairAlignment& alignment);

/// Where something of `length` columns begins on the axis if it is moved by `shift`; negative if it sticks out.
constexpr int firstColumn(Direction direction, int axis, int length, int shift) {
    return direction == Direction::forward ? shift : axis - length - shift;
}

}  // namespace varnolix
