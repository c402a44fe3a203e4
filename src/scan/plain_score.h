#pragma once

#include <vector>

#include "run/scored_shift.h"
#include "run/shared_records.h"
#include "scan/kernel/pair_kernel.h"

// The plain form of the score of an alignment, for pairs that the kernel does not take: those with very long motifs,
// and those with values outside [0, 1], whose sums depend on the order of addition.

namespace varnolix {

/// The two strands of a motif.
struct Strands {
    const Matrix& original;
    const Matrix& reversed;
};

struct AlignmentScore {
    double score;
    Orientation orientation;
};

/// The best of the four orientation scores of the alignment in which column k of `left` faces column k + shift of
/// `right`. A score is the mean of the cells: each cell, most - |x - y|, is rounded to double, the cells are added in
/// the widest type, and the sum divided by their number is rounded to double. Columns are added from first to last in a
/// forward scan, and from last to first in a backward scan. The first of equal scores wins. If the first score is not a
/// number, it stays; a later score that is not a number is ignored.
AlignmentScore plainScore(const Strands& left, const Strands& right, int shift, double most, Direction direction);

/// Scores every shift of the pair for the scans asked for, and appends the alignments at or above the cutoff, by
/// ascending shift.
void appendPlainShifts(const Strands& left, const Strands& right, OuterMotif outer, std::uint32_t partner,
                       int leastOverlap, double most, double cutoff, Walks asked, std::vector<ScoredShift>& kept);

}  // namespace varnolix
