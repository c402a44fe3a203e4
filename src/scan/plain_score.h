#pragma once

#include <vector>

#include "run/scored_shift.h"
#include "run/shared_records.h"
#include "scan/kernel/pair_kernel.h"

// The plain form of the score of an alignment, for the pairs that the kernel does not take: motifs of very many columns
// and values outside [0, 1], whose sums depend on the order of addition.

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

/// Best of the four orientation scores of the alignment that lays column k of `left` on column k + shift of `right`:
/// cells most - |x - y| rounded to double, added up in the widest type, divided by their number, rounded to double; the
/// first of equal scores wins. Columns are added from first to last in a forward scan, from last to first in a backward
/// one. A first score that is no number stays; another one is passed over.
AlignmentScore plainScore(const Strands& left, const Strands& right, int shift, double most, Direction direction);

/// Scores every shift of the pair in the walks that are asked for and appends those at or above the cutoff, shifts
/// ascending.
void appendPlainShifts(const Strands& left, const Strands& right, OuterMotif outer, std::uint32_t partner,
                       int leastOverlap, double most, double cutoff, Walks asked, std::vector<ScoredShift>& kept);

}  // namespace varnolix
