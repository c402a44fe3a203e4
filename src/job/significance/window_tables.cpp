#include "job/significance/window_tables.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace varnolix::job {

namespace {

/// Share of the distribution that is kept as it is.
constexpr double keptShare = 1.0 - 0x1p-10;
/// What may be lost by rounding in the sum of a whole distribution.
constexpr double roundedOff = 0x1p-36;
constexpr double leastShare = 1e-290;
/// What single precision may add to the distance of a column, and more.
constexpr double slackPerColumn = 0x1p-20;
constexpr double raised = 1.0 + 0x1p-30;

}  // namespace

DistanceShares sharesOf(std::span<const std::uint32_t> counts) {
    const auto total = static_cast<double>(std::accumulate(counts.begin(), counts.end(), std::uint64_t{0}));
    DistanceShares shares;
    for (std::size_t step = 0; step < counts.size(); ++step) {
        if (counts[step] != 0) shares.push_back({static_cast<std::int32_t>(step), counts[step] / total});
    }
    return shares;
}

void WindowTables::start(std::span<const DistanceShares> columns, double stepsPerOne, const VectorSteps& steps) {
    columns_ = columns;
    stepsPerOne_ = stepsPerOne;
    steps_ = steps;
    windows_.assign(columns.size() * (columns.size() + 1), Window{});
    cumulative_.clear();
    std::int32_t greatest = 0;
    for (const DistanceShares& shares : columns) {
        greatest = std::max(greatest, shares.back().step - shares.front().step);
    }
    padding_ = static_cast<std::size_t>(greatest);
}

void WindowTables::addWindows(std::size_t first, std::size_t mostLength, std::size_t leastLength, double greatest) {
    // One step more is read when values in between are looked up.
    const auto lastStep = static_cast<std::int64_t>(
        std::min((greatest + slackPerColumn * static_cast<double>(mostLength)) * stepsPerOne_ + 2.0, 1e15));
    lowest_ = 0;
    size_ = 1;
    current_.assign(padding_ + 1 + convolvedAtOnce + elementsPastEnd, 0.0);
    current_[padding_] = 1.0;
    for (std::size_t length = 1; length <= mostLength; ++length) {
        appendColumn(columns_[first + length - 1], lastStep);
        if (length >= leastLength) keepWindow(windows_[first * (columns_.size() + 1) + length]);
    }
}

void WindowTables::appendColumn(const DistanceShares& shares, std::int64_t lastStep) {
    const std::int32_t least = shares.front().step;
    const std::size_t most = size_ + static_cast<std::size_t>(shares.back().step - least);
    next_.resize(padding_ + most + 2 * convolvedAtOnce + elementsPastEnd);
    std::fill_n(next_.begin(), padding_, 0.0);
    lowest_ += least;
    sums_.clear();
    double sum = 0.0;
    std::size_t size = 0;
    bool isWhole = false;
    while (size < most && !isWhole) {
        // Only shares that reach the values there are.
        const auto needed = [&](std::int64_t step) {
            return std::lower_bound(
                shares.begin(), shares.end(), step,
                [](const DistanceShare& share, std::int64_t wanted) { return share.step < wanted; });
        };
        const auto place = static_cast<std::int64_t>(size);
        const auto from = needed(place - static_cast<std::int64_t>(size_) + 1 + least);
        const auto to = needed(place + static_cast<std::int64_t>(convolvedAtOnce) + least);
        double* values = next_.data() + padding_ + size;
        steps_.convolve(current_.data() + padding_ + size + least, shares.data() + (from - shares.begin()),
                        static_cast<std::size_t>(to - from), values);
        const std::size_t last = std::min(most, size + convolvedAtOnce);
        for (; size < last && !isWhole; ++size, ++values) {
            if (*values > 0.0 && *values < leastShare) *values = leastShare;
            sum += *values;
            sums_.push_back(sum);
            isWhole = sum >= keptShare || lowest_ + static_cast<std::int64_t>(size) >= lastStep;
        }
    }
    // All that lies above comes next.
    if (size < most) {
        next_[padding_ + size] = std::max(0.0, 1.0 - sum) + roundedOff;
        sums_.push_back(1.0);
        ++size;
    }
    size_ = size;
    next_.resize(padding_ + size_);
    next_.resize(padding_ + size_ + padding_ + convolvedAtOnce + elementsPastEnd);
    current_.swap(next_);
}

void WindowTables::keepWindow(Window& window) {
    window = {static_cast<double>(lowest_ - 1), cumulative_.size(), size_ + 1, 0};
    cumulative_.push_back(0.0);
    std::transform(sums_.begin(), sums_.end() - 1, std::back_inserter(cumulative_),
                   [](double sum) { return std::min(1.0, sum * raised); });
    cumulative_.push_back(1.0);
    const auto values = cumulative_.begin() + static_cast<std::ptrdiff_t>(window.firstValue);
    window.frequent = static_cast<std::size_t>(std::lower_bound(values, cumulative_.end(), frequentShare) - values);
}

double WindowTables::frequentDistance(std::size_t first, std::size_t length) const {
    const Window& window = windowAt(first, length);
    return (window.lowest + static_cast<double>(window.frequent)) / stepsPerOne_;
}

double WindowTables::probability(std::size_t first, std::size_t length, double distance) const {
    const Window& window = windowAt(first, length);
    const double steps = (distance + slackPerColumn * static_cast<double>(length)) * stepsPerOne_ - window.lowest;
    if (!(steps > 0.0)) return leastProbability;
    if (steps >= static_cast<double>(window.values - 1)) return 1.0;
    const auto whole = static_cast<std::size_t>(steps);
    const double* value = cumulative_.data() + window.firstValue + whole;
    const double between = value[0] + (value[1] - value[0]) * (steps - static_cast<double>(whole));
    return std::max(leastProbability, std::min(value[1], between));
}

}  // namespace varnolix::job
