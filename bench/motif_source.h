#pragma once

#include <cstddef>
#include <iosfwd>
#include <span>
#include <vector>

#include "run/shared_records.h"

// Motifs as they are met, for all benchmarks: 6 to 24 positions, 15 on average; half of the draws start a family of two
// to ten members, whose members are shifted, lie on either strand and are counted anew from few sites, the others are
// motifs without kin. The seed is fixed, so every run and every program sees the same motifs; the first n of a longer
// list are not those of a shorter one, as lists are shuffled.

namespace varnolix::bench {

/// Sites per base and position.
std::vector<Matrix> countMatrices(std::size_t motifs);

/// The motifs of these counts as the readers leave them, numbered from 1, all in data set 1.
std::vector<data> motifsOfCounts(std::span<const Matrix> counts);

/// The counts in the Jaspar layout, each block closed by an empty line. Names are m1, m2, ... from `firstNumber` on.
void writeJaspar(std::ostream& stream, std::span<const Matrix> counts, std::size_t firstNumber);

}  // namespace varnolix::bench
