#pragma once

#include <cstddef>
#include <iosfwd>
#include <span>
#include <vector>

#include "run/shared_records.h"

// Realistic motifs for all benchmarks. They have 6 to 24 positions, 15 on average. Half of the draws start a family of
// two to ten motifs, which are shifted against each other, lie on either strand and are counted separately from a few
// sites; the other draws are single motifs. The seed is fixed, so every run and every program sees the same motifs.
// Lists are shuffled, so a short list is not the beginning of a longer one.

namespace varnolix::bench {

/// The counts of sites per position and base.
std::vector<Matrix> countMatrices(std::size_t motifs);

/// The motifs with these counts, as the readers would make them: numbered from 1, all in data set 1.
std::vector<data> motifsOfCounts(std::span<const Matrix> counts);

/// Writes the counts in the Jaspar layout, with an empty line after each block. The names are m1, m2 and so on,
/// starting with `firstNumber`.
void writeJaspar(std::ostream& stream, std::span<const Matrix> counts, std::size_t firstNumber);

}  // namespace varnolix::bench
