#pragma once

#include <string>

#include "run/shared_records.h"

namespace varnolix {

/// The two lines of a drawn alignment. "Own" is the motif that the list belongs to, "other" is its match; the other
/// motif's line is printed first.
struct AlignmentLines {
    std::string other;
    std::string own;
};

/// Draws an alignment of two motifs. In a forward alignment, the other motif's text begins at the left edge and the own
/// text is moved right by position - 1. In a backward alignment, both end at the right edge and the own text is moved
/// left. Nothing is clipped. The own motif is always drawn in `firstFormat`, the record's first format, even if it is
/// the second motif of the record; all reports show it this way.
AlignmentLines drawAlignment(const data& other, MatchingFormat otherFormat, const data& own, MatchingFormat firstFormat,
                             Direction direction, int position, int overlapColumns);

}  // namespace varnolix
