#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "job/job_motif.h"
#include "job/significance/significance.h"

// The distances of all pairs of a job's motifs, which follow from their p-values (pair_alignment.h). Equal motifs, on
// whichever strand, are one here, so many of them cost neither time nor memory. Tested by families_test.cpp.

namespace varnolix::job {

/// Equal motifs, as usableMatrix() makes them, by their places; the first stands for all.
struct EqualMotifs {
    std::vector<std::size_t> motifs;  ///< ascending
    std::vector<bool> isOpposite;     ///< whether it equals the first one's other strand, and not its own
};

/// Groups motifs of which all columns are usable, in the order of their first ones.
std::vector<EqualMotifs> equalMotifs(std::span<const Matrix> motifs);

/// How many motifs differ from all before them.
std::size_t differentMotifs(const JobSources& sources);

/// Throws JobError if the distances of so many different motifs do not fit the memory that is left.
void requireMemoryForFamilies(std::size_t motifs);

class FamilyDistances {
  public:
    /// Throws JobError for lack of memory. At least one motif.
    explicit FamilyDistances(std::span<const data> motifs);

    /// Takes the p-values of a motif as the query and all others as its targets, both by their places among all
    /// motifs. Several threads may call this; every motif has to be the query once.
    void take(std::size_t query, const QueryMatches& found);
    /// Works out the p-values of all motifs; for a caller that has none.
    void takeAll();

    const std::vector<EqualMotifs>& equal() const { return equal_; }
    /// The first motif of each group of equal ones, of which only the matrix is set, and the number of its copies.
    const std::vector<data>& different() const { return different_; }
    const std::vector<std::uint32_t>& copies() const { return copies_; }
    /// The different motifs, with the columns of all as the background.
    const ColumnPool& pool() const { return pool_; }

    /// The distances of all pairs of different motifs, in the order of pairCell(), when all p-values were taken. To be
    /// called once, as the table is handed over.
    std::vector<double> finished();

  private:
    void add(std::size_t query, std::size_t target, double pValue);

    std::vector<EqualMotifs> equal_;
    std::vector<data> different_;
    std::vector<std::uint32_t> copies_;
    std::vector<std::size_t> placeAmongDifferent_;  // of each motif; `isCopy` for all but the first of equal ones
    ColumnPool pool_;
    std::vector<double> distances_;
};

}  // namespace varnolix::job
