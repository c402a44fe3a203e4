#pragma once

#include <string>

#include "run/shared_records.h"

namespace varnolix {

/// The two lines of an alignment, the other motif's first.
struct AlignmentLines {
    std::string other;
    std::string own;
};

/// Draws how two motifs lie on each other. A forward alignment has the other motif's text at the left edge and the own
/// one moved right by position - 1; a backward one has both at the right edge and the own one moved left. Nothing is
/// clipped. The own motif is always drawn by `firstFormat`, the record's first format, also where it is the second
/// motif of the record; all reports show it so.
AlignmentLines drawAlignment(const data& other, MatchingFormat otherFormat, const data& own, MatchingFormat firstFormat,
                             Direction direction, int position, int overlapColumns);

}  // namespace varnolix
