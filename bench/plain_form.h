#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "run/scored_shift.h"
#include "run/shared_records.h"

// The plain form of scoring: four walks over each pair of motifs, as the definition tells it and with no shortcut. It
// is the yardstick of the kernel, both for results and for speed, and shares no code with it.

namespace varnolix::plain {

/// A kept alignment of one region of one scan.
struct Alignment {
    Direction direction;
    bool isSecondRegion;  ///< j slides along i, not i along j
    std::size_t offset;   ///< of the sliding motif; in a backward scan counted from the ends
    std::size_t overlap;
    double score;
    Orientation orientation;
};

inline constexpr std::size_t leastOverlap = 4;

struct Best {
    double score;
    Orientation orientation;
};

/// Scores `columns` columns, from i's column iStart and j's column jStart on, stepping by +1 or -1.
inline Best scoreAlignment(const data& i, const data& j, std::size_t iStart, std::size_t jStart, std::size_t columns,
                           std::ptrdiff_t step) {
    std::array<long double, 4> sums{};
    for (std::size_t k = 0; k < columns; ++k) {
        const std::size_t walked = k * static_cast<std::size_t>(step);  // wraps round when walking backwards
        const Column& iOriginal = i.matrix[iStart + walked];
        const Column& iReversed = i.revCompMatrix[iStart + walked];
        const Column& jOriginal = j.matrix[jStart + walked];
        const Column& jReversed = j.revCompMatrix[jStart + walked];
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
        return static_cast<double>(sums[n] / static_cast<long double>(4 * columns));
    };
    Best best{mean(0), Orientation::bothOriginal};
    for (std::size_t n = 1; n < sums.size(); ++n) {
        const double score = mean(n);
        if (score > best.score) {
            best = {score, static_cast<Orientation>(n)};
        }
    }
    return best;
}

/// One region: the sliding motif is i in the first, j in the second.
inline void scanRegion(const data& i, const data& j, Direction direction, bool isSecondRegion, double cutoff,
                       std::vector<Alignment>& kept) {
    const std::size_t sliding = isSecondRegion ? j.matrix.size() : i.matrix.size();
    const std::size_t fixed = isSecondRegion ? i.matrix.size() : j.matrix.size();
    const bool isForward = direction == Direction::forward;
    for (std::size_t offset = 0; offset + leastOverlap <= fixed; ++offset) {
        const std::size_t overlap = std::min(sliding, fixed - offset);
        const std::size_t slidingStart = isForward ? 0 : sliding - 1;
        const std::size_t fixedStart = isForward ? offset : fixed - 1 - offset;
        const Best best = scoreAlignment(i, j, isSecondRegion ? fixedStart : slidingStart,
                                         isSecondRegion ? slidingStart : fixedStart, overlap, isForward ? 1 : -1);
        if (best.score >= cutoff) {
            kept.push_back({direction, isSecondRegion, offset, overlap, best.score, best.orientation});
        }
    }
}

/// All alignments of outer motif i and inner motif j that reach the cutoff: the forward scan's, then the backward
/// scan's.
inline void scorePair(const data& i, const data& j, double cutoff, std::vector<Alignment>& kept) {
    if (i.matrix.size() < leastOverlap || j.matrix.size() < leastOverlap) {
        return;
    }
    for (const Direction direction : {Direction::forward, Direction::backward}) {
        scanRegion(i, j, direction, false, cutoff, kept);
        scanRegion(i, j, direction, true, cutoff, kept);
    }
}

}  // namespace varnolix::plain
