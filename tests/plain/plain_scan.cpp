#include "plain/plain_scan.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace varnolix::plain {

namespace {

struct Best {
    double score;
    Orientation orientation;
};

Best scoreWalk(const data& i, const data& j, const Walk& walk) {
    std::array<long double, 4> sums{};
    for (std::size_t k = 0; k < walk.columns; ++k) {
        const std::size_t walked = k * walk.step;
        const Column& iOriginal = i.matrix[walk.iStart + walked];
        const Column& iReversed = i.revCompMatrix[walk.iStart + walked];
        const Column& jOriginal = j.matrix[walk.jStart + walked];
        const Column& jReversed = j.revCompMatrix[walk.jStart + walked];
        for (std::size_t base = 0; base < 4; ++base) {
            const double bothOriginal = 1.0 - std::fabs(iOriginal[base] - jOriginal[base]);
            const double secondReversed = 1.0 - std::fabs(iOriginal[base] - jReversed[base]);
            const double firstReversed = 1.0 - std::fabs(iReversed[base] - jOriginal[base]);
            const double bothReversed = 1.0 - std::fabs(iReversed[base] - jReversed[base]);
            sums[0] += bothOriginal;
            sums[1] += secondReversed;
            sums[2] += firstReversed;
            sums[3] += bothReversed;
        }
    }
    const auto mean = [&](std::size_t n) {
        return static_cast<double>(sums[n] / static_cast<long double>(4 * walk.columns));
    };
    Best best{mean(0), Orientation::bothOriginal};
    for (std::size_t n = 1; n < sums.size(); ++n) {
        const double score = mean(n);
        if (score > best.score) best = {score, static_cast<Orientation>(n)};
    }
    return best;
}

}  // namespace

std::vector<Walk> walksOf(Direction direction, Region region, std::size_t lengthI, std::size_t lengthJ,
                          std::size_t least) {
    const bool isForward = direction == Direction::forward;
    const bool isFirst = region == Region::first;
    const std::size_t sliding = isFirst ? lengthI : lengthJ;
    const std::size_t fixed = isFirst ? lengthJ : lengthI;
    const std::size_t step = isForward ? std::size_t{1} : ~std::size_t{0};
    const std::size_t slidingStart = isForward ? 0 : sliding - 1;
    std::vector<Walk> walks;
    for (std::size_t offset = 0; offset + least <= fixed; ++offset) {
        const std::size_t columns = std::min(sliding, fixed - offset);
        const std::size_t fixedStart = isForward ? offset : fixed - 1 - offset;
        walks.push_back(
            {offset, columns, isFirst ? slidingStart : fixedStart, isFirst ? fixedStart : slidingStart, step});
    }
    return walks;
}

void scanPair(const data& i, const data& j, Direction direction, double cutoff, std::vector<Alignment>& kept) {
    if (i.matrix.size() < leastOverlap || j.matrix.size() < leastOverlap) return;
    for (const Region region : {Region::first, Region::second}) {
        for (const Walk& walk : walksOf(direction, region, i.matrix.size(), j.matrix.size())) {
            const Best best = scoreWalk(i, j, walk);
            if (!(best.score >= cutoff)) continue;  // a score that is no number is dropped too
            kept.push_back({direction, region, walk.offset, walk.columns, best.score, best.orientation});
        }
    }
}

void scorePair(const data& i, const data& j, double cutoff, std::vector<Alignment>& kept) {
    for (const Direction direction : {Direction::forward, Direction::backward}) {
        scanPair(i, j, direction, cutoff, kept);
    }
}

}  // namespace varnolix::plain
