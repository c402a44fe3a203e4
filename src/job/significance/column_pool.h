#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "job/significance/vector_steps.h"
#include "run/shared_records.h"

// The targets of a comparison as the p-values need them: all their columns as the background, and each strand of each
// target laid out for scoring. Tested by column_pool_test.cpp.

namespace varnolix::job {

/// Motifs shorter than this are compared with nothing.
inline constexpr std::size_t leastColumns = 4;

/// The matrix with every column that has a value outside [0, 1], or that is not a number for want of counts, taken as
/// 0.25 for each base.
Matrix usableMatrix(const Matrix& matrix);
/// Whether usableMatrix() changes the column.
bool isUsable(const Column& column);

/// The other strand: the columns from last to first, in each of them A and T swapped, and C and G.
Matrix oppositeStrand(const Matrix& matrix);

/// The columns that a target offers to an alignment: as they are, or as the reports reverse them, with only the pair
/// swapped that holds the largest value.
enum class Background : std::uint8_t { asGiven, asReversedInReports };

class ColumnPool {
  public:
    explicit ColumnPool(std::span<const data> targets);

    std::size_t targets() const { return lengths_.size(); }
    std::size_t length(std::size_t target) const { return lengths_[target]; }
    /// Whether it is long enough to be compared.
    bool isCompared(std::size_t target) const { return lengths_[target] >= leastColumns; }
    std::size_t comparedTargets() const { return comparedTargets_; }
    std::size_t longest() const { return longest_; }
    const Matrix& matrix(std::size_t target) const { return matrices_[target]; }

    /// Columns of the background, on both strands, without those of the target that is left out.
    std::size_t columns(const std::size_t* leftOut) const;

    /// Counts the columns of the background by their distance from the given one, in steps, rounded down and at most
    /// the last of counts.
    void countDistances(const Column& column, Background background, const std::size_t* leftOut, double stepsPerOne,
                        std::span<std::uint32_t> counts, const VectorSteps& steps) const;

    /// The columns of a target on one strand, in rows of paddedLength() values.
    BaseRows<double> strand(std::size_t target, bool isOpposite) const;
    /// 1 for each column of the target, and then 0.
    const double* weights(std::size_t target) const;
    /// A multiple of the most lanes.
    std::size_t paddedLength(std::size_t target) const;

  private:
    /// Rows of stride_ values, the columns of a target side by side, as given and on the other strand.
    struct BackgroundRows {
        std::vector<float> values;
    };
    void appendStrand(const Matrix& strand, std::size_t padded);
    BackgroundRows backgroundOf(Background background) const;

    std::vector<Matrix> matrices_;
    std::vector<std::size_t> lengths_;
    std::vector<std::size_t> firstColumns_;  // in the background; one more for the end
    std::vector<std::size_t> firstValues_;   // in strandValues_
    std::size_t comparedTargets_ = 0;
    std::size_t longest_ = 0;
    std::size_t stride_ = 0;
    BackgroundRows asGiven_;
    BackgroundRows asReversed_;
    std::vector<double> strandValues_;  // for each target both strands and the weights
};

}  // namespace varnolix::job
