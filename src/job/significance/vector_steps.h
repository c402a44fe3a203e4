#pragma once

#include <cstddef>
#include <cstdint>

#include "run/shared_records.h"
#include "scan/kernel/pair_kernel.h"

// The inner loops of the p-values. Each is written once and compiled for the same three kinds of processor as the pair
// kernel. A lane never touches another lane, and there is no fused multiply-add, so all three give the same bits.

namespace varnolix::job {

/// Vector loads and stores run up to this many elements past the end of what they are given.
inline constexpr std::size_t elementsPastEnd = 16;

/// Columns with the values of each base in a row of their own, as the vector units take them.
template <class Value>
struct BaseRows {
    const Value* rows;   ///< the row of A; the others follow
    std::size_t stride;  ///< from one row to the next
};

/// One possible distance of a column, in steps, with its probability.
struct DistanceShare {
    std::int32_t step;
    double share;
};

/// Outputs of one call of `convolve`.
inline constexpr std::size_t convolvedAtOnce = 32;

struct VectorSteps {
    /// Writes for each of the columns how far two of its forms are from the given column, in whole steps, rounded down
    /// and at most `greatest`: with `swapsOnePair`, the forms with A and T swapped, and with C and G swapped; else the
    /// column as it is, and with both pairs swapped. The distances of the second forms begin at `distances` + columns +
    /// elementsPastEnd.
    void (*measure)(const Column& column, BaseRows<float> others, std::size_t columns, bool swapsOnePair,
                    float stepsPerOne, std::int32_t greatest, std::int32_t* distances);
    /// Writes for each of the columns its distance from the given one, or 0 where its weight is 0 instead of 1.
    void (*measureFinely)(const Column& column, BaseRows<float> others, const float* weights, std::size_t columns,
                          float* distances);
    /// Writes for each of `count` neighbouring shifts the sum of the distances on its diagonal: of element `n` in the
    /// first row, `n + 1` in the second, and so on.
    void (*addDiagonals)(const float* firstRow, std::size_t stride, std::size_t rows, std::size_t count, float* sums);
    /// Writes 32 neighbouring values of the distribution of a sum: value[n] is the sum of
    /// shares[k].share * before[n - shares[k].step] over k, in the order of k.
    void (*convolve)(const double* before, const DistanceShare* shares, std::size_t count, double* values);
};

VectorSteps vectorSteps(KernelCode code = fastestKernelCode());

}  // namespace varnolix::job
