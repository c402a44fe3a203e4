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

/// How the columns of a query meet those of the background. The reports reverse a column by swapping only the pair, A
/// and T or C and G, that holds its largest value. If they reverse one of two motifs, then for each column of the
/// background, on one strand or the other, one pair is swapped: A and T for one strand, C and G for the other. If they
/// reverse both or none, the background is the columns themselves, on both strands.
enum class Background : std::uint8_t { bothStrands, onePairSwapped };

class ColumnPool {
  public:
    /// @param copies how often the columns of each target are in the background; once each if none are given
    explicit ColumnPool(std::span<const data> targets, std::span<const std::uint32_t> copies = {});

    std::size_t targets() const { return matrices_.size(); }
    std::size_t length(std::size_t target) const { return matrices_[target].size(); }
    /// Whether it is long enough to be compared.
    bool isCompared(std::size_t target) const { return length(target) >= leastColumns; }
    std::size_t comparedTargets() const { return comparedTargets_; }
    std::size_t longest() const { return longest_; }
    /// As usableMatrix() makes it, and its other strand.
    const Matrix& matrix(std::size_t target) const { return matrices_[target]; }
    const Matrix& opposite(std::size_t target) const { return opposites_[target]; }

    /// Columns of the background, on both strands, without those of the target that is left out, if there is one; of
    /// its copies, one is left out.
    std::size_t columns(const std::size_t* leftOut) const;

    /// Counts the columns of the background by their distance from the given one, in steps, rounded down and at most
    /// the last of counts.
    void countDistances(const Column& column, Background background, const std::size_t* leftOut, int stepsPerOne,
                        std::span<std::uint32_t> counts, const VectorSteps& steps) const;

    /// The columns of a target on one strand, in rows of paddedLength() values.
    BaseRows<float> strand(std::size_t target, bool isOpposite) const;
    /// 1 for each column of the target, and then 0.
    const float* weights(std::size_t target) const;
    /// A multiple of the most lanes.
    std::size_t paddedLength(std::size_t target) const;

  private:
    void appendStrand(const Matrix& strand, std::size_t padded);
    void fillBackground(std::span<const std::uint32_t> copies);

    std::vector<Matrix> matrices_, opposites_;
    std::size_t comparedTargets_ = 0;
    std::size_t columns_ = 0;
    std::size_t longest_ = 0;
    // For each target both strands and the weights.
    std::vector<std::size_t> firstValues_;
    std::vector<float> strandValues_;
    // The different columns of one strand, in rows, and how often each is there. A column and what it is on the other
    // strand count as one, as their distances are counted together.
    std::size_t stride_ = 0;
    std::vector<float> background_;
    std::vector<std::uint32_t> repeats_;
};

}  // namespace varnolix::job
