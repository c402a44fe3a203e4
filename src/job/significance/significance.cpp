#include "job/significance/significance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>

#include "job/significance/window_tables.h"

namespace varnolix::job {

namespace {

constexpr double basesPerColumn = 4.0;
constexpr int least = static_cast<int>(leastColumns);

/// The best alignment of a pair: the least probable one, of equal ones the first, with the strands alike before those
/// with the strands opposed, and by ascending shift.
struct BestAlignment {
    double probability = 2.0;
    int shift = 0;
    bool isOpposite = false;
};

struct Facing {
    int first;  ///< column of the query
    int columns;
};

Facing facingAt(int shift, std::size_t queryColumns, std::size_t targetColumns) {
    const int first = std::max(0, -shift);
    return {first, std::min(static_cast<int>(queryColumns), static_cast<int>(targetColumns) - shift) - first};
}

double distanceOf(double similarity, int columns) {
    return basesPerColumn * columns * (1.0 - similarity);
}

/// What one thread needs to work out a query. It keeps its memory from query to query.
class QueryWork {
  public:
    QueryWork(const ColumnPool& targets, const VectorSteps& steps) : targets_(targets), steps_(steps) {}

    QueryResult work(const QueryRequest& request, std::size_t best) {
        QueryResult result;
        request_ = &request;
        leftOut_ = request.self ? &*request.self : nullptr;
        const bool isSelfCompared = leftOut_ != nullptr && targets_.isCompared(*leftOut_);
        result.comparedTargets = targets_.comparedTargets() - (isSelfCompared ? 1 : 0);
        result.backgroundColumns = targets_.columns(leftOut_);
        result.listed.resize(request.listed.size());
        query_ = usableMatrix(*request.query);
        hasTables_ = query_.size() <= mostQueryColumns;
        if (result.comparedTargets == 0 || query_.size() < leastColumns) return result;

        fillPairs();
        listBest(best, result);
        listRequested(result);
        return result;
    }

    const std::vector<double>& pValues() const { return pValues_; }

  private:
    void fillPairs() {
        if (hasTables_) makeTables();
        matches_.clear();
        std::vector<double> compared;
        const std::size_t count = targets_.targets();
        pValues_.assign(count, 1.0);
        qValues_.assign(count, 1.0);
        for (std::size_t target = 0; target < count; ++target) {
            if (!targets_.isCompared(target) || (leftOut_ != nullptr && *leftOut_ == target)) continue;
            matches_.push_back(matchOf(target, bestAlignment(target)));
            pValues_[target] = matches_.back().pair.pValue;
            compared.push_back(matches_.back().pair.pValue);
        }
        const std::vector<double> rates = falseDiscoveryRates(compared);
        for (std::size_t n = 0; n < matches_.size(); ++n) {
            matches_[n].pair.qValue = qValues_[matches_[n].target] = rates[n];
            matches_[n].pair.eValue = matches_[n].pair.pValue * static_cast<double>(matches_.size());
        }
    }

    DistanceShares sharesOfColumn(const Column& column, Background background) {
        const int steps = stepsPerOne(query_.size());
        counts_.assign(2 * static_cast<std::size_t>(steps) + 1, 0);
        targets_.countDistances(column, background, leftOut_, steps, counts_, steps_);
        return sharesOf(counts_);
    }

    void makeTables() {
        const std::size_t columns = query_.size();
        shares_.clear();
        for (const Column& column : query_) shares_.push_back(sharesOfColumn(column, Background::asGiven));
        tables_.start(shares_, stepsPerOne(columns), steps_);
        for (std::size_t first = 0; first + leastColumns <= columns; ++first) {
            tables_.addWindows(first, std::min(columns - first, targets_.longest()), leastColumns, 1e12);
        }
    }

    BestAlignment bestAlignment(std::size_t target) {
        const std::size_t length = targets_.length(target);
        const std::size_t columns = query_.size();
        const int firstShift = least - static_cast<int>(columns);
        const std::size_t shifts = columns + length - 2 * leastColumns + 1;
        BestAlignment best;
        for (const bool isOpposite : {false, true}) {
            addDistances(target, isOpposite, firstShift, shifts);
            for (std::size_t n = 0; n < shifts; ++n) {
                const int shift = firstShift + static_cast<int>(n);
                const Facing facing = facingAt(shift, columns, length);
                // Without tables the closest columns are the best.
                const double probability = hasTables_ ? tables_.probability(static_cast<std::size_t>(facing.first),
                                                                            static_cast<std::size_t>(facing.columns),
                                                                            sums_[n])
                                                      : sums_[n] / (2.0 * basesPerColumn * facing.columns);
                if (probability < best.probability) best = {probability, shift, isOpposite};
            }
        }
        return best;
    }

    /// Fills sums_ with the distances of the alignments from the given shift on.
    void addDistances(std::size_t target, bool isOpposite, int firstShift, std::size_t shifts) {
        // Each row has the distances of one query column from the columns of the target, between zeros.
        const std::size_t columns = query_.size();
        const std::size_t padded = targets_.paddedLength(target);
        const std::size_t zeros = columns;
        const std::size_t stride = zeros + targets_.paddedLength(target) + columns + elementsPastEnd;
        if (stride != stride_ || rows_.size() != stride * columns + elementsPastEnd) {
            stride_ = stride;
            rows_.assign(stride * columns + elementsPastEnd, 0.0);
        }
        const BaseRows<double> strand = targets_.strand(target, isOpposite);
        for (std::size_t k = 0; k < columns; ++k) {
            steps_.measureExactly(query_[k], strand, targets_.weights(target), padded,
                                  rows_.data() + k * stride + zeros);
        }
        sums_.resize(shifts + elementsPastEnd);
        steps_.addDiagonals(rows_.data() + static_cast<std::ptrdiff_t>(zeros) + firstShift, stride, columns, shifts,
                            sums_.data());
    }

    SignificantMatch matchOf(std::size_t target, const BestAlignment& best) {
        SignificantMatch match;
        match.target = target;
        match.shift = best.shift;
        match.isOpposite = best.isOpposite;
        const Facing facing = facingAt(best.shift, query_.size(), targets_.length(target));
        match.overlap = facing.columns;
        const Matrix& matrix = targets_.matrix(target);
        match.similarity = meanSimilarity(query_, best.isOpposite ? oppositeStrand(matrix) : matrix, best.shift);
        if (!hasTables_) return match;
        match.alignment =
            tables_.probability(static_cast<std::size_t>(facing.first), static_cast<std::size_t>(facing.columns),
                                distanceOf(match.similarity, facing.columns));
        match.pair.pValue = bestOfAlignments(match.alignment, alignmentsOf(query_.size(), targets_.length(target)));
        return match;
    }

    void listBest(std::size_t best, QueryResult& result) {
        const auto isBetter = [](const SignificantMatch& one, const SignificantMatch& other) {
            if (one.pair.pValue != other.pair.pValue) return one.pair.pValue < other.pair.pValue;
            if (one.similarity != other.similarity) return one.similarity > other.similarity;
            return one.target < other.target;
        };
        const std::size_t listed = std::min(best, matches_.size());
        std::partial_sort(matches_.begin(), matches_.begin() + static_cast<std::ptrdiff_t>(listed), matches_.end(),
                          isBetter);
        result.best.assign(matches_.begin(), matches_.begin() + static_cast<std::ptrdiff_t>(listed));
    }

    void listRequested(QueryResult& result) {
        for (std::size_t n = 0; n < request_->listed.size(); ++n) {
            const std::size_t target = request_->listed[n].target;
            result.listed[n].pair = {pValues_[target], pValues_[target] * static_cast<double>(result.comparedTargets),
                                     qValues_[target]};
        }
        if (!hasTables_) return;
        for (const bool isQueryReversed : {false, true}) {
            for (const bool isTargetReversed : {false, true}) {
                listStrands(isQueryReversed, isTargetReversed, result);
            }
        }
    }

    /// The alignments of the request with these strands: how close columns come depends on how both are reversed.
    void listStrands(bool isQueryReversed, bool isTargetReversed, QueryResult& result) {
        // For each first column the longest window and the greatest distance.
        struct Needed {
            int columns = 0;
            double distance = 0.0;
        };
        std::map<int, Needed> needed;
        const std::size_t columns = query_.size();
        std::vector<std::size_t> places;
        const auto facingOf = [&](const ListedAlignment& listed) {
            return facingAt(listed.shift, columns, targets_.length(listed.target));
        };
        for (std::size_t n = 0; n < request_->listed.size(); ++n) {
            const ListedAlignment& listed = request_->listed[n];
            if (listed.isQueryReversed != isQueryReversed || listed.isTargetReversed != isTargetReversed) continue;
            const Facing facing = facingOf(listed);
            Needed& window = needed[facing.first];
            window.columns = std::max(window.columns, facing.columns);
            window.distance = std::max(window.distance, distanceOf(listed.similarity, facing.columns));
            places.push_back(n);
        }
        const bool isGiven = !isQueryReversed && !isTargetReversed;
        if (!isGiven && !needed.empty()) {
            const Matrix matrix = isQueryReversed ? usableMatrix(*request_->reversed) : query_;
            std::size_t firstColumn = columns;
            std::size_t endColumn = 0;
            for (const auto& [first, window] : needed) {
                firstColumn = std::min(firstColumn, static_cast<std::size_t>(first));
                endColumn = std::max(endColumn, static_cast<std::size_t>(first + window.columns));
            }
            listedShares_.assign(columns, DistanceShares{{0, 1.0}});
            for (std::size_t k = firstColumn; k < endColumn; ++k) {
                listedShares_[k] = sharesOfColumn(
                    matrix[k], isTargetReversed ? Background::asReversedInReports : Background::asGiven);
            }
            listedTables_.start(listedShares_, stepsPerOne(columns), steps_);
            for (const auto& [first, window] : needed) {
                listedTables_.addWindows(static_cast<std::size_t>(first), static_cast<std::size_t>(window.columns),
                                         leastColumns, window.distance);
            }
        }
        const WindowTables& tables = isGiven ? tables_ : listedTables_;
        for (const std::size_t n : places) {
            const Facing facing = facingOf(request_->listed[n]);
            result.listed[n].alignment =
                tables.probability(static_cast<std::size_t>(facing.first), static_cast<std::size_t>(facing.columns),
                                   distanceOf(request_->listed[n].similarity, facing.columns));
        }
    }

    const ColumnPool& targets_;
    VectorSteps steps_;
    const QueryRequest* request_ = nullptr;
    const std::size_t* leftOut_ = nullptr;
    bool hasTables_ = false;
    Matrix query_;
    std::vector<std::uint32_t> counts_;
    std::vector<DistanceShares> shares_, listedShares_;
    WindowTables tables_, listedTables_;
    std::size_t stride_ = 0;
    std::vector<double> rows_, sums_;
    std::vector<SignificantMatch> matches_;
    std::vector<double> pValues_, qValues_;
};

}  // namespace

int stepsPerOne(std::size_t queryColumns) {
    constexpr std::array<std::pair<std::size_t, int>, 3> fineness = {{{12, 128}, {24, 64}, {40, 32}}};
    for (const auto& [columns, steps] : fineness) {
        if (queryColumns <= columns) return steps;
    }
    return 16;
}

double bestOfAlignments(double probability, double alignments) {
    if (probability >= 1.0) return 1.0;
    return std::clamp(-std::expm1(alignments * std::log1p(-probability)), leastProbability, 1.0);
}

std::vector<double> falseDiscoveryRates(std::span<const double> pValues) {
    std::vector<std::size_t> order(pValues.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        return pValues[one] != pValues[other] ? pValues[one] < pValues[other] : one < other;
    });
    std::vector<double> rates(pValues.size());
    double rate = 1.0;
    for (std::size_t n = order.size(); n > 0; --n) {
        rate = std::min(rate, pValues[order[n - 1]] * static_cast<double>(order.size()) / static_cast<double>(n));
        rates[order[n - 1]] = rate;
    }
    return rates;
}

double meanSimilarity(const Matrix& query, const Matrix& target, int shift) {
    const Facing facing = facingAt(shift, query.size(), target.size());
    long double sum = 0.0L;
    for (int k = facing.first; k < facing.first + facing.columns; ++k) {
        const Column& one = query[static_cast<std::size_t>(k)];
        const Column& other = target[static_cast<std::size_t>(k + shift)];
        for (std::size_t base = 0; base < one.size(); ++base) {
            sum += 1.0 - std::fabs(one[base] - other[base]);
        }
    }
    return static_cast<double>(sum / (static_cast<long double>(basesPerColumn) * facing.columns));
}

std::vector<QueryResult> significanceOf(std::span<const QueryRequest> requests, const ColumnPool& targets,
                                        std::size_t best, KernelCode code) {
    std::vector<QueryResult> results(requests.size());
    const VectorSteps steps = vectorSteps(code);
    const auto count = static_cast<std::ptrdiff_t>(requests.size());
#pragma omp parallel
    {
        QueryWork work(targets, steps);
#pragma omp for schedule(dynamic, 1)
        for (std::ptrdiff_t n = 0; n < count; ++n) {
            const auto place = static_cast<std::size_t>(n);
            results[place] = work.work(requests[place], best);
        }
    }
    return results;
}

std::vector<double> pairProbabilities(const QueryRequest& request, const ColumnPool& targets) {
    QueryWork work(targets, vectorSteps());
    work.work(request, 0);
    return work.pValues();
}

}  // namespace varnolix::job
