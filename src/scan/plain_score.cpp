#include "scan/plain_score.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "scan/kernel/kernel_motifs.h"
#include "scan/region_rule.h"

namespace varnolix {

namespace {

PairLengths lengthsOf(const Strands& left, const Strands& right) {
    return {static_cast<int>(left.original.size()), static_cast<int>(right.original.size())};
}

// Long motifs
//
// Most alignments of a pair score far below the cutoff, and usually one orientation scores far above the others. So if
// all values are within [0, 1], a rough mean in doubles is computed first, which is many times as fast as one addition
// after another in extended precision. Only alignments that may reach the cutoff go on to the plain form, with only the
// orientations that may be their best. The scores that are kept always come from the plain form, so their bits do not
// depend on the rough mean.
//
// The rough mean is 1 - d / 4 L, where d is the sum of the distances |x - y| over L columns, added base by base.
// Rounding moves each distance by at most 2^-54 and each addition, to a sum of at most L, by L * 2^-53. That moves d by
// 4 L (L + 1) * 2^-53 and its mean by (L + 1) * 2^-53. The plain mean is off by 2^-54 from its cells, 2^-53 from its
// result, and 4 L * 2^-64 from its additions. Together these errors stay below (L + 4) * 2^-52, and the margin is four
// times as large.
//
// Up to 512 columns, the sum of the cells (multiples of 2^-53) is at most 2^11 and fits the 64 bits of extended
// precision. So it is exact, and the same in both directions. With more columns, additions may round, and their order
// matters.

constexpr int mostExactColumns = 512;
constexpr bool hasExtendedPrecision = std::numeric_limits<long double>::digits >= 64;

double roughMargin(int columns) {
    return (columns + 4) * 0x1p-50;
}

bool lieWithinUnit(const Strands& strands) {
    return liesWithinUnit(strands.original) && liesWithinUnit(strands.reversed);
}

/// The two matrices that one orientation compares.
struct Facing {
    const Matrix& left;
    const Matrix& right;
};

/// The four orientations, in their order.
std::array<Facing, 4> facings(const Strands& first, const Strands& second) {
    return {Facing{first.original, second.original}, Facing{first.original, second.reversed},
            Facing{first.reversed, second.original}, Facing{first.reversed, second.reversed}};
}

double roughMean(const Facing& facing, int shift, int columns) {
    const Column* x = facing.left.data() + std::max(0, -shift);
    const Column* y = facing.right.data() + std::max(0, shift);
    // Two sets of sums, so that an addition need not wait for the one before.
    std::array<Column, 2> sums{};
    const auto add = [](Column& sum, const Column& a, const Column& b) {
        for (std::size_t base = 0; base < sum.size(); ++base) sum[base] += std::fabs(a[base] - b[base]);
    };
    int column = 0;
    for (; column + 1 < columns; column += 2) {
        add(sums[0], x[column], y[column]);
        add(sums[1], x[column + 1], y[column + 1]);
    }
    if (column < columns) add(sums[0], x[column], y[column]);
    double distance = 0;
    for (std::size_t base = 0; base < sums[0].size(); ++base) distance += sums[0][base] + sums[1][base];
    return 1 - distance / (4.0 * columns);
}

/// Which orientations may be the best one of an alignment.
using Rivals = std::array<bool, 4>;
constexpr Rivals allRivals{true, true, true, true};

/// There are none if no orientation may reach the cutoff.
Rivals rivalsOf(const std::array<Facing, 4>& orientations, int shift, int columns, double cutoff) {
    std::array<double, 4> means{};
    std::transform(orientations.begin(), orientations.end(), means.begin(),
                   [&](const Facing& facing) { return roughMean(facing, shift, columns); });
    const double best = *std::max_element(means.begin(), means.end());
    const double margin = roughMargin(columns);
    Rivals rivals{};
    if (best + margin < cutoff) return rivals;
    std::transform(means.begin(), means.end(), rivals.begin(),
                   [&](double mean) { return mean + margin >= best - margin; });
    return rivals;
}

double meanScore(const Matrix& left, const Matrix& right, int shift, int columns, double most, Direction direction) {
    const int first = std::max(0, -shift);
    long double sum = 0;
    for (int step = 0; step < columns; ++step) {
        const int column = direction == Direction::forward ? first + step : first + columns - 1 - step;
        const Column& x = left[static_cast<std::size_t>(column)];
        const Column& y = right[static_cast<std::size_t>(std::ptrdiff_t{column} + shift)];
        for (std::size_t base = 0; base < x.size(); ++base) {
            const double cell = most - std::fabs(x[base] - y[base]);
            sum += cell;
        }
    }
    return static_cast<double>(sum / (4 * static_cast<long double>(columns)));
}

/// The best of the rivals; there must be at least one.
AlignmentScore bestScore(const std::array<Facing, 4>& orientations, const Rivals& rivals, int shift, int columns,
                         double most, Direction direction) {
    std::optional<AlignmentScore> best;
    for (std::size_t n = 0; n < orientations.size(); ++n) {
        if (!rivals[n]) continue;
        const double score = meanScore(orientations[n].left, orientations[n].right, shift, columns, most, direction);
        if (!best || score > best->score) best = {score, static_cast<Orientation>(n)};
    }
    return *best;
}

}  // namespace

AlignmentScore plainScore(const Strands& left, const Strands& right, int shift, double most, Direction direction) {
    return bestScore(facings(left, right), allRivals, shift, overlapAt(lengthsOf(left, right), shift), most, direction);
}

void appendPlainShifts(const Strands& left, const Strands& right, OuterMotif outer, std::uint32_t partner,
                       int leastOverlap, double most, double cutoff, Walks asked, std::vector<ScoredShift>& kept) {
    const PairLengths lengths = lengthsOf(left, right);
    if (lengths.left < leastOverlap || lengths.right < leastOverlap) return;
    // Orientations name the outer motif first.
    const bool swapped = outer == OuterMotif::right;
    const std::array<Facing, 4> orientations = swapped ? facings(right, left) : facings(left, right);
    const bool isWithinUnit = most == 1.0 && lieWithinUnit(left) && lieWithinUnit(right);
    for (int shift = leastShift(lengths, leastOverlap); shift <= mostShift(lengths, leastOverlap); ++shift) {
        const int columns = overlapAt(lengths, shift);
        const int outerShift = swapped ? -shift : shift;
        const Rivals rivals = isWithinUnit ? rivalsOf(orientations, outerShift, columns, cutoff) : allRivals;
        if (rivals == Rivals{}) continue;
        const bool isOneSum = hasExtendedPrecision && isWithinUnit && columns <= mostExactColumns;
        std::optional<AlignmentScore> best;
        for (const auto& [direction, walk] :
             {std::pair{Direction::forward, forwardWalk}, std::pair{Direction::backward, backwardWalk}}) {
            if ((asked & walk) == 0) continue;
            if (!best || !isOneSum) best = bestScore(orientations, rivals, outerShift, columns, most, direction);
            if (!(best->score >= cutoff)) continue;  // drops a score that is not a number, too
            ScoredShift& added = kept.emplace_back();
            added.score = best->score;
            added.partner = partner & partnerMask;
            added.shift = shift;
            added.orientation = best->orientation;
            added.walks = walk;
        }
    }
}

}  // namespace varnolix
