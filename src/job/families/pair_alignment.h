#pragma once

#include <cstddef>
#include <vector>

#include "job/significance/column_pool.h"
#include "job/significance/window_tables.h"

// How far two motifs are apart, and how they lie at their best.
//
// The distance is the mean of the tenth roots of two p-values, that of either motif as the query and the other as its
// target (job/significance): 0.5 is a p-value of 1 in 1024, 0.1 one of 1e-10. So length and background count as they do
// there, and the roots keep means of distances from being those of the least sure pairs alone; docs/families.md has
// what other functions reach. Equal motifs have distance 0, and those with fewer than four columns 1 from all others.
// Tested by pair_alignment_test.cpp.

namespace varnolix::job {

/// What one of the two p-values adds to the distance.
double distancePart(double pValue);

/// A motif and how likely windows of its columns are to come as close to random columns as was seen. Motifs that are
/// too long for tables take the normal distribution with the mean and the variance of the window's distances.
class WindowChances {
  public:
    /// @param leftOut the target whose columns are not part of the background, if there is one
    WindowChances(const Matrix& motif, const ColumnPool& background, const std::size_t* leftOut);

    const Matrix& matrix() const { return matrix_; }
    const Matrix& opposite() const { return opposite_; }
    /// Of at least min(4, all) columns.
    double chance(int first, int columns, double distance) const;

  private:
    Matrix matrix_, opposite_;
    bool hasTables_ = false;
    std::vector<DistanceShares> shares_;
    WindowTables tables_;
    std::vector<double> means_, variances_;  // of the columns before each, and of all
};

/// The best alignment of two motifs.
struct MotifAlignment {
    int shift = 0;  ///< column k of the first motif faces column k + shift of the strand of the second
    bool isOpposite = false;
    double distance = 1.0;
};

/// The alignment with the least product of the two chances; of equal ones the first, strands alike before strands
/// opposed, shifts ascending. Four columns face each other at least, or as many as the shorter motif has.
MotifAlignment alignmentOf(const WindowChances& one, const WindowChances& other);

/// As p-values of a query with more columns than there are tables for: of each target that is long enough, and 1 for
/// the others and for the one that is left out.
std::vector<double> longQueryProbabilities(const WindowChances& query, const ColumnPool& targets, std::size_t leftOut);

}  // namespace varnolix::job
