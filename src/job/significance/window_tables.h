#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "job/significance/vector_steps.h"

// How likely neighbouring columns of a query are to come as close to columns drawn from the background as was seen.
//
// The distance of two columns is the sum over the bases of |c - x|: 4 minus their similarity, for frequencies from 0 to
// 2. It is rounded down to whole steps, and the distribution of the sum over neighbouring columns, drawn independently,
// is the convolution of theirs: that of one more column is worked out from the window before it.
//
// Never too small: write D for a distance and q = floor(D / h) for its number of steps of size h. If the sum of D over
// L columns is at most d, then the sum of q is at most d / h. So P(sum of D <= d) <= P(sum of q <= d / h), and the
// latter is what is looked up. Since D < h (q + 1), the sum of q is at most d / h only if the sum of D is below
// d + L h; so what is looked up is at most P(sum of D < d + L h). Values between whole steps are read off the straight
// line to the next step, which raises them, for one more step: P(sum of D < d + (L + 1) h) is the upper bound. In terms
// of the mean similarity, 1 - d / (4 L), the bound lies lower by h / 4 (1 + 1/L).
//
// Sums above all but 1 in 1024 are counted as the least of them: again a distance rounded down. It saves a third of the
// work and makes no difference to a p-value that anybody looks at. Distances are worked out in single precision, which
// may be off by some 2^-22; what is looked up is raised by 2^-20 a column for that. All terms are positive, so their
// sums are right to some 10^-12; the result is raised by 2^-30 of itself. Values below 1e-290 are raised to that.
// Tested by window_tables_test.cpp.

namespace varnolix::job {

/// The least p-value.
inline constexpr double leastProbability = 1e-280;

/// Alignments that are more frequent than this need not be looked at where there is a better one.
inline constexpr double frequentShare = 1.0 / 32;

/// The distribution of the distance of one column: what is possible, by ascending steps.
using DistanceShares = std::vector<DistanceShare>;

/// From the counts of each number of steps.
DistanceShares sharesOf(std::span<const std::uint32_t> counts);

class WindowTables {
  public:
    /// Forgets all windows and takes the columns of a query, which must outlive the tables.
    void start(std::span<const DistanceShares> columns, double stepsPerOne, const VectorSteps& steps);

    /// Works out the windows that start at the column and have up to that many columns; of those, the ones with at
    /// least `leastLength` can be looked up.
    /// @param greatest sums of distances above this will not be looked up
    void addWindows(std::size_t first, std::size_t mostLength, std::size_t leastLength, double greatest);

    /// P(sum of distances <= this), in [leastProbability, 1]; a larger sum never has a smaller probability.
    double probability(std::size_t first, std::size_t length, double distance) const;

    /// From this sum of distances on, the probability is at least frequentShare.
    double frequentDistance(std::size_t first, std::size_t length) const;

  private:
    struct Window {
        double lowest = 0.0;  // the step of the first value, which is 0
        std::size_t firstValue = 0;
        std::size_t values = 0;    // the last of which is 1
        std::size_t frequent = 0;  // the first value that is at least frequentShare
    };

    const Window& windowAt(std::size_t first, std::size_t length) const {
        return windows_[first * (columns_.size() + 1) + length];
    }
    void keepWindow(Window& window);
    void appendColumn(const DistanceShares& shares, std::int64_t lastStep);

    std::span<const DistanceShares> columns_;
    double stepsPerOne_ = 0.0;
    VectorSteps steps_{};
    std::size_t padding_ = 0;
    std::vector<Window> windows_;     // by first column and length
    std::vector<double> cumulative_;  // of all windows
    // The distribution of the window that is being worked out, after `padding_` zeros and before more of them.
    std::vector<double> current_, next_;
    std::vector<double> sums_;  // of its first values
    std::size_t size_ = 0;
    std::int64_t lowest_ = 0;
};

}  // namespace varnolix::job
