#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "run/shared_records.h"

// Motifs that are laid side by side on common axes, which join two at a time. Tested by placement_test.cpp.

namespace varnolix::job {

/// Where a motif lies.
struct PlacedMotif {
    std::size_t motif = 0;
    bool isReversed = false;
    int offset = 0;  ///< column of the axis on which its first column lies, on its strand
    int columns = 0;
};

/// A column of an axis, with how much stands behind it.
struct WeightedColumn {
    Column mean{};
    double weight = 0.0;
};

/// Motifs on a common axis. No column is without any of them.
struct PlacedGroup {
    std::vector<PlacedMotif> motifs;
    std::vector<WeightedColumn> columns;
    double weight = 0.0;  ///< of all motifs
};

/// A motif by itself. Columns without counts are taken as even ones.
PlacedGroup placedAlone(std::size_t motif, const Matrix& matrix, double weight);

/// The axis as it reads on the other strand.
void reverseGroup(PlacedGroup& group);

/// Lays the second group on the axis of the first and averages the columns, each side by its weight.
/// @param shift column k of the first faces column k + shift of the second
void joinGroups(PlacedGroup& group, PlacedGroup other, int shift);

/// The part of an axis that is left when its outer columns are cut.
struct AxisPart {
    std::size_t first = 0;
    std::size_t columns = 0;
};

/// Cuts the outer columns of less weight than this share of the group's, or of the weightiest column where none has so
/// much.
AxisPart withoutFlanks(const PlacedGroup& group, double share);

/// The means of that part.
Matrix meansOf(const PlacedGroup& group, AxisPart part);

}  // namespace varnolix::job
