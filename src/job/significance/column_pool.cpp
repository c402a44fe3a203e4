#include "job/significance/column_pool.h"

#include <algorithm>
#include <array>
#include <utility>

#include "input/getRevCompMotif.h"

namespace varnolix::job {

namespace {

constexpr std::size_t bases = 4;
constexpr std::size_t mostLanes = 8;
constexpr std::size_t measuredAtOnce = 512;

Column oppositeColumn(const Column& column) {
    return {column[3], column[2], column[1], column[0]};
}

/// As getRevCompMotif() changes it.
Column reversedInReports(Column column) {
    if (swapsAT(column)) {
        std::swap(column[0], column[3]);
    } else {
        std::swap(column[1], column[2]);
    }
    return column;
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

ColumnPool::ColumnPool(std::span<const data> targets) {
    std::size_t columns = 0;
    for (const data& target : targets) {
        const std::size_t length = target.matrix.size();
        const bool takesPart = length >= leastColumns;
        matrices_.push_back(usableMatrix(target.matrix));
        lengths_.push_back(length);
        longest_ = std::max(longest_, length);
        firstColumns_.push_back(columns);
        firstValues_.push_back(strandValues_.size());
        if (!takesPart) continue;
        ++comparedTargets_;
        columns += 2 * length;
        const std::size_t padded = paddedLength(matrices_.size() - 1);
        appendStrand(matrices_.back(), padded);
        appendStrand(oppositeStrand(matrices_.back()), padded);
        strandValues_.insert(strandValues_.end(), length, 1.0);
        strandValues_.insert(strandValues_.end(), padded - length, 0.0);
    }
    strandValues_.resize(strandValues_.size() + elementsPastEnd);
    firstColumns_.push_back(columns);
    stride_ = columns + elementsPastEnd;
    asGiven_ = backgroundOf(Background::asGiven);
    asReversed_ = backgroundOf(Background::asReversedInReports);
}

void ColumnPool::appendStrand(const Matrix& strand, std::size_t padded) {
    for (std::size_t base = 0; base < bases; ++base) {
        for (const Column& column : strand) strandValues_.push_back(column[base]);
        strandValues_.insert(strandValues_.end(), padded - strand.size(), 0.0);
    }
}

ColumnPool::BackgroundRows ColumnPool::backgroundOf(Background background) const {
    BackgroundRows rows{std::vector<float>(bases * stride_)};
    std::size_t place = 0;
    const auto append = [&](const Column& given) {
        const Column column = background == Background::asGiven ? given : reversedInReports(given);
        for (std::size_t base = 0; base < bases; ++base) {
            rows.values[base * stride_ + place] = static_cast<float>(column[base]);
        }
        ++place;
    };
    for (std::size_t target = 0; target < matrices_.size(); ++target) {
        if (!isCompared(target)) continue;
        for (const Column& column : matrices_[target]) append(column);
        for (const Column& column : matrices_[target]) append(oppositeColumn(column));
    }
    return rows;
}

std::size_t ColumnPool::columns(const std::size_t* leftOut) const {
    const std::size_t all = firstColumns_.back();
    return leftOut == nullptr ? all : all - (firstColumns_[*leftOut + 1] - firstColumns_[*leftOut]);
}

void ColumnPool::countDistances(const Column& column, Background background, const std::size_t* leftOut,
                                double stepsPerOne, std::span<std::uint32_t> counts, const VectorSteps& steps) const {
    const float* values = (background == Background::asGiven ? asGiven_ : asReversed_).values.data();
    std::array<std::int32_t, measuredAtOnce + elementsPastEnd> distances;
    const auto greatest = static_cast<std::int32_t>(counts.size() - 1);
    const auto countRange = [&](std::size_t first, std::size_t last) {
        for (; first < last; first += measuredAtOnce) {
            const std::size_t measured = std::min(measuredAtOnce, last - first);
            steps.measure(column, {values + first, stride_}, measured, static_cast<float>(stepsPerOne), greatest,
                          distances.data());
            for (std::size_t n = 0; n < measured; ++n) ++counts[static_cast<std::size_t>(distances[n])];
        }
    };
    if (leftOut == nullptr) {
        countRange(0, firstColumns_.back());
    } else {
        countRange(0, firstColumns_[*leftOut]);
        countRange(firstColumns_[*leftOut + 1], firstColumns_.back());
    }
}

std::size_t ColumnPool::paddedLength(std::size_t target) const {
    return (lengths_[target] + mostLanes - 1) / mostLanes * mostLanes;
}

BaseRows<double> ColumnPool::strand(std::size_t target, bool isOpposite) const {
    const std::size_t padded = paddedLength(target);
    return {strandValues_.data() + firstValues_[target] + (isOpposite ? bases * padded : 0), padded};
}

const double* ColumnPool::weights(std::size_t target) const {
    return strandValues_.data() + firstValues_[target] + 2 * bases * paddedLength(target);
}

}  // namespace varnolix::job
