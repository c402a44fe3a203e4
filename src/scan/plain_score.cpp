#include "scan/plain_score.h"

#include <cmath>
#include <utility>

#include "scan/region_rule.h"

namespace varnolix {

namespace {

PairLengths lengthsOf(const Strands& left, const Strands& right) {
    return {static_cast<int>(left.original.size()), static_cast<int>(right.original.size())};
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

}  // namespace

AlignmentScore plainScore(const Strands& left, const Strands& right, int shift, double most, Direction direction) {
    const int columns = overlapAt(lengthsOf(left, right), shift);
    const auto mean = [&](const Matrix& x, const Matrix& y) {
        return meanScore(x, y, shift, columns, most, direction);
    };
    AlignmentScore best{mean(left.original, right.original), Orientation::bothOriginal};
    const auto challenge = [&](double score, Orientation orientation) {
        if (score > best.score) best = {score, orientation};
    };
    challenge(mean(left.original, right.reversed), Orientation::secondReversed);
    challenge(mean(left.reversed, right.original), Orientation::firstReversed);
    challenge(mean(left.reversed, right.reversed), Orientation::bothReversed);
    return best;
}

void appendPlainShifts(const Strands& left, const Strands& right, OuterMotif outer, std::uint32_t partner,
                       int leastOverlap, double most, double cutoff, std::vector<ScoredShift>& kept) {
    const PairLengths lengths = lengthsOf(left, right);
    if (lengths.left < leastOverlap || lengths.right < leastOverlap) return;
    // The outer motif is the one that the orientations call the first.
    const bool swapped = outer == OuterMotif::right;
    const Strands& first = swapped ? right : left;
    const Strands& second = swapped ? left : right;
    for (int shift = leastShift(lengths, leastOverlap); shift <= mostShift(lengths, leastOverlap); ++shift) {
        for (const auto& [direction, walk] :
             {std::pair{Direction::forward, forwardWalk}, std::pair{Direction::backward, backwardWalk}}) {
            const AlignmentScore best = plainScore(first, second, swapped ? -shift : shift, most, direction);
            if (!(best.score >= cutoff)) continue;  // a score that is no number is dropped too
            ScoredShift& added = kept.emplace_back();
            added.score = best.score;
            added.partner = partner & partnerMask;
            added.shift = shift;
            added.orientation = best.orientation;
            added.walks = walk;
        }
    }
}

}  // namespace varnolix
