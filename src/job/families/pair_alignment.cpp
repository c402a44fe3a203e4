#include "job/families/pair_alignment.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "job/significance/significance.h"

namespace varnolix::job {

namespace {

constexpr double anyDistance = 1e12;

/// Calls take(shift, isOpposite, facing) for each alignment of motifs with so many columns.
template <class Take>
void forEachAlignment(std::size_t columns, std::size_t others, Take take) {
    const auto least = static_cast<int>(std::min({leastColumns, columns, others}));
    for (const bool isOpposite : {false, true}) {
        for (int shift = least - static_cast<int>(columns); shift <= static_cast<int>(others) - least; ++shift) {
            take(shift, isOpposite, facingAt(shift, columns, others));
        }
    }
}

}  // namespace

double distancePart(double pValue) {
    return std::pow(pValue, 0.1) / 2.0;
}

WindowChances::WindowChances(const Matrix& motif, const ColumnPool& background, const std::size_t* leftOut)
    : matrix_(usableMatrix(motif)), opposite_(oppositeStrand(matrix_)), hasTables_(motif.size() <= mostQueryColumns) {
    const VectorSteps steps = vectorSteps();
    if (background.columns(leftOut) == 0) return;
    shares_ = distanceSharesOf(matrix_, background, Background::bothStrands, leftOut, steps);
    const double stepSize = 1.0 / stepsPerOne(matrix_.size());
    if (hasTables_) {
        const std::size_t least = std::min(leastColumns, matrix_.size());
        tables_.start(shares_, stepsPerOne(matrix_.size()), steps);
        for (std::size_t first = 0; first + least <= matrix_.size(); ++first) {
            tables_.addWindows(first, matrix_.size() - first, least, anyDistance);
        }
        return;
    }
    means_.push_back(0.0);
    variances_.push_back(0.0);
    for (const DistanceShares& column : shares_) {
        double mean = 0.0;
        double squares = 0.0;
        for (const DistanceShare& share : column) {
            // The middle of the step.
            const double distance = (share.step + 0.5) * stepSize;
            mean += share.share * distance;
            squares += share.share * distance * distance;
        }
        means_.push_back(means_.back() + mean);
        variances_.push_back(variances_.back() + std::max(0.0, squares - mean * mean));
    }
}

double WindowChances::chance(int first, int columns, double distance) const {
    if (shares_.empty()) return 1.0;
    const auto begin = static_cast<std::size_t>(first);
    const auto end = begin + static_cast<std::size_t>(columns);
    if (hasTables_) return tables_.probability(begin, end - begin, distance);
    const double variance = variances_[end] - variances_[begin];
    const double below = means_[end] - means_[begin] - distance;
    if (variance <= 0.0) return below > 0.0 ? leastProbability : 1.0;
    return std::clamp(std::erfc(below / std::sqrt(variance) / std::numbers::sqrt2) / 2.0, leastProbability, 1.0);
}

MotifAlignment alignmentOf(const WindowChances& one, const WindowChances& other) {
    const std::size_t columns = one.matrix().size();
    const std::size_t others = other.matrix().size();
    MotifAlignment best;
    double bestSum = anyDistance;
    double bestOne = 1.0;
    double bestOther = 1.0;
    forEachAlignment(columns, others, [&](int shift, bool isOpposite, Facing facing) {
        const double similarity = meanSimilarity(one.matrix(), isOpposite ? other.opposite() : other.matrix(), shift);
        const double distance = distanceOf(similarity, facing.columns);
        const int faced = facing.first + shift;
        const double chance = one.chance(facing.first, facing.columns, distance);
        const double otherChance = other.chance(isOpposite ? static_cast<int>(others) - faced - facing.columns : faced,
                                                facing.columns, distance);
        bestOne = std::min(bestOne, chance);
        bestOther = std::min(bestOther, otherChance);
        // Of alignments that no chance tells apart, as in a background of nothing, the closest.
        const double sum = std::log(chance) + std::log(otherChance) - similarity * 0x1p-30;
        if (sum >= bestSum) return;
        bestSum = sum;
        best.shift = shift;
        best.isOpposite = isOpposite;
    });
    if (one.matrix() == other.matrix() || one.matrix() == other.opposite()) {
        best.distance = 0.0;
    } else if (std::min(columns, others) >= leastColumns) {
        const double alignments = alignmentsOf(columns, others);
        best.distance =
            distancePart(bestOfAlignments(bestOne, alignments)) + distancePart(bestOfAlignments(bestOther, alignments));
    }
    return best;
}

std::vector<double> longQueryProbabilities(const WindowChances& query, const ColumnPool& targets, std::size_t leftOut) {
    std::vector<double> pValues(targets.targets(), 1.0);
    const std::size_t columns = query.matrix().size();
    for (std::size_t target = 0; target < targets.targets(); ++target) {
        if (target == leftOut || !targets.isCompared(target)) continue;
        double best = 1.0;
        forEachAlignment(columns, targets.length(target), [&](int shift, bool isOpposite, Facing facing) {
            const double similarity =
                meanSimilarity(query.matrix(), isOpposite ? targets.opposite(target) : targets.matrix(target), shift);
            best = std::min(best, query.chance(facing.first, facing.columns, distanceOf(similarity, facing.columns)));
        });
        pValues[target] = bestOfAlignments(best, alignmentsOf(columns, targets.length(target)));
    }
    return pValues;
}

}  // namespace varnolix::job
