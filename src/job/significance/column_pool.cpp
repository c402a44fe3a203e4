#include "job/significance/column_pool.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace varnolix::job {

namespace {

constexpr std::size_t bases = 4;
constexpr std::size_t mostLanes = 16;
constexpr std::size_t measuredAtOnce = 512;

Column oppositeColumn(const Column& column) {
    return {column[3], column[2], column[1], column[0]};
}

using FloatColumn = std::array<float, bases>;

FloatColumn floatColumn(const Column& column) {
    return {static_cast<float>(column[0]), static_cast<float>(column[1]), static_cast<float>(column[2]),
            static_cast<float>(column[3])};
}

}  // namespace

bool isUsable(const Column& column) {
    return std::ranges::all_of(column, [](double value) { return value >= 0.0 && value <= 1.0; });
}

Matrix usableMatrix(const Matrix& matrix) {
    Matrix usable = matrix;
    for (Column& column : usable) {
        if (!isUsable(column)) column.fill(1.0 / bases);
    }
    return usable;
}

Matrix oppositeStrand(const Matrix& matrix) {
    Matrix opposite;
    opposite.reserve(matrix.size());
    std::transform(matrix.rbegin(), matrix.rend(), std::back_inserter(opposite), oppositeColumn);
    return opposite;
}

ColumnPool::ColumnPool(std::span<const data> targets, std::span<const std::uint32_t> copies) {
    for (const data& target : targets) {
        matrices_.push_back(usableMatrix(target.matrix));
        opposites_.push_back(oppositeStrand(matrices_.back()));
        firstValues_.push_back(strandValues_.size());
        const std::size_t length = target.matrix.size();
        if (length < leastColumns) continue;
        ++comparedTargets_;
        longest_ = std::max(longest_, length);
        columns_ += length * (copies.empty() ? 1 : copies[matrices_.size() - 1]);
        const std::size_t padded = paddedLength(matrices_.size() - 1);
        appendStrand(matrices_.back(), padded);
        appendStrand(opposites_.back(), padded);
        strandValues_.insert(strandValues_.end(), length, 1.0F);
        strandValues_.insert(strandValues_.end(), padded - length, 0.0F);
    }
    fillBackground(copies);
}

void ColumnPool::appendStrand(const Matrix& strand, std::size_t padded) {
    for (std::size_t base = 0; base < bases; ++base) {
        for (const Column& column : strand) strandValues_.push_back(static_cast<float>(column[base]));
        strandValues_.insert(strandValues_.end(), padded - strand.size(), 0.0F);
    }
}

void ColumnPool::fillBackground(std::span<const std::uint32_t> copies) {
    std::vector<std::pair<FloatColumn, std::uint32_t>> columns;
    for (std::size_t target = 0; target < targets(); ++target) {
        if (!isCompared(target)) continue;
        for (const Column& column : matrices_[target]) {
            columns.emplace_back(std::min(floatColumn(column), floatColumn(oppositeColumn(column))),
                                 copies.empty() ? 1 : copies[target]);
        }
    }
    std::sort(columns.begin(), columns.end());
    std::vector<FloatColumn> different;
    for (const auto& [column, count] : columns) {
        if (different.empty() || different.back() != column) {
            different.push_back(column);
            repeats_.push_back(0);
        }
        repeats_.back() += count;
    }
    stride_ = different.size() + elementsPastEnd;
    background_.resize(bases * stride_);
    for (std::size_t n = 0; n < different.size(); ++n) {
        for (std::size_t base = 0; base < bases; ++base) background_[base * stride_ + n] = different[n][base];
    }
}

std::size_t ColumnPool::columns(const std::size_t* leftOut) const {
    const bool leavesOut = leftOut != nullptr && isCompared(*leftOut);
    return 2 * (columns_ - (leavesOut ? length(*leftOut) : 0));
}

void ColumnPool::countDistances(const Column& column, Background background, const std::size_t* leftOut,
                                int stepsPerOne, std::span<std::uint32_t> counts, const VectorSteps& steps) const {
    const bool swapsOnePair = background == Background::onePairSwapped;
    const auto greatest = static_cast<std::int32_t>(counts.size() - 1);
    std::array<std::int32_t, 2 * (measuredAtOnce + elementsPastEnd)> distances;
    // Calls count(n, form) for both forms of the columns, with their distances.
    const auto measured = [&](BaseRows<float> rows, std::size_t all, auto count) {
        for (std::size_t first = 0; first < all; first += measuredAtOnce) {
            const std::size_t some = std::min(measuredAtOnce, all - first);
            steps.measure(column, {rows.rows + first, rows.stride}, some, swapsOnePair, static_cast<float>(stepsPerOne),
                          greatest, distances.data());
            const std::int32_t* others = distances.data() + some + elementsPastEnd;
            for (std::size_t n = 0; n < some; ++n) {
                count(first + n, counts[static_cast<std::size_t>(distances[n])]);
                count(first + n, counts[static_cast<std::size_t>(others[n])]);
            }
        }
    };
    measured({background_.data(), stride_}, repeats_.size(),
             [&](std::size_t n, std::uint32_t& seen) { seen += repeats_[n]; });
    if (leftOut != nullptr && isCompared(*leftOut)) {
        // The other form of the columns is counted, too, so it does not matter on which strand they are.
        measured(strand(*leftOut, false), length(*leftOut), [](std::size_t, std::uint32_t& seen) { --seen; });
    }
}

std::size_t ColumnPool::paddedLength(std::size_t target) const {
    return (length(target) + mostLanes - 1) / mostLanes * mostLanes;
}

BaseRows<float> ColumnPool::strand(std::size_t target, bool isOpposite) const {
    const std::size_t padded = paddedLength(target);
    return {strandValues_.data() + firstValues_[target] + (isOpposite ? bases * padded : 0), padded};
}

const float* ColumnPool::weights(std::size_t target) const {
    return strandValues_.data() + firstValues_[target] + 2 * bases * paddedLength(target);
}

}  // namespace varnolix::job
