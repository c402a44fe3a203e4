#include "job/significance/significance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>

#include "job/significance/window_tables.h"
#include "scan/kernel/exact_sums.h"

namespace varnolix::job {

namespace {

constexpr double basesPerColumn = 4.0;
constexpr double anyDistance = 1e12;
/// More than the share by which single precision can change a probability.
constexpr double nearlyEqual = 1.0 + 0x1p-10;
constexpr int least = static_cast<int>(leastColumns);

struct BestAlignment {
    double rank;  ///< its probability, if there are tables
    int shift;
    bool isOpposite;
    double similarity;  ///< once it was looked at closely
};

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
        matches_.clear();
        if (result.comparedTargets == 0 || query_.size() < leastColumns) return result;

        fillPairs();
        listBest(best, result);
        listRequested(result);
        return result;
    }

    /// All matches of the query, once it was worked out; valid until the next one.
    QueryMatches allMatches() const {
        if (matches_.empty() || !hasTables_ || targets_.longest() < query_.size()) return {matches_, 1.0};
        return {matches_, bestOfAlignments(tables_.probability(0, query_.size(), 0.0),
                                           alignmentsOf(query_.size(), query_.size()))};
    }

    const std::vector<double>& pValues() const { return pValues_; }

  private:
    void fillPairs() {
        if (hasTables_) makeTables();
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

    void makeTables() {
        const std::size_t columns = query_.size();
        shares_ = distanceSharesOf(query_, targets_, Background::bothStrands, leftOut_, steps_);
        tables_.start(shares_, stepsPerOne(columns), steps_);
        for (std::size_t first = 0; first + leastColumns <= columns; ++first) {
            tables_.addWindows(first, std::min(columns - first, targets_.longest()), leastColumns, anyDistance);
        }
        frequentDistances_.assign(targets_.longest() + 1, {});
    }

    /// How good an alignment is, less being better. Without tables the closest columns are the best.
    double rankOf(const Facing& facing, double distance) const {
        if (!hasTables_) return distance / facing.columns;
        return tables_.probability(static_cast<std::size_t>(facing.first), static_cast<std::size_t>(facing.columns),
                                   distance);
    }

    /// For the shifts of a target of this length the distances from which on alignments are frequent.
    const std::vector<float>& frequentDistances(std::size_t length) {
        std::vector<float>& distances = frequentDistances_[length];
        if (distances.empty()) {
            for (int shift = firstShift(); shift <= static_cast<int>(length) - least; ++shift) {
                const Facing facing = facingAt(shift, query_.size(), length);
                distances.push_back(static_cast<float>(tables_.frequentDistance(
                    static_cast<std::size_t>(facing.first), static_cast<std::size_t>(facing.columns))));
            }
        }
        return distances;
    }

    int firstShift() const { return least - static_cast<int>(query_.size()); }

    /// The least probable alignment; of equal ones the first, strands alike before strands opposed, shifts ascending.
    BestAlignment bestAlignment(std::size_t target) {
        const std::size_t length = targets_.length(target);
        const std::size_t shifts = query_.size() + length - 2 * leastColumns + 1;
        addDistances(target, false, shifts, sums_);
        addDistances(target, true, shifts, oppositeSums_);

        // By rough distances first; those that are nearly as good as the best are then looked at closely.
        rough_.clear();
        double best = anyDistance;
        const auto look = [&](bool isOpposite, std::size_t n) {
            const int shift = firstShift() + static_cast<int>(n);
            const double rank = rankOf(facingAt(shift, query_.size(), length),
                                       static_cast<double>((isOpposite ? oppositeSums_ : sums_)[n]));
            best = std::min(best, rank);
            rough_.push_back({rank, shift, isOpposite, 0.0});
        };
        if (hasTables_) {
            const std::vector<float>& frequent = frequentDistances(length);
            for (std::size_t n = 0; n < shifts; ++n) {
                if (sums_[n] < frequent[n]) look(false, n);
            }
            for (std::size_t n = 0; n < shifts; ++n) {
                if (oppositeSums_[n] < frequent[n]) look(true, n);
            }
        }
        if (best >= frequentShare) {
            rough_.clear();
            for (std::size_t n = 0; n < shifts; ++n) look(false, n);
            for (std::size_t n = 0; n < shifts; ++n) look(true, n);
        }
        BestAlignment result{2.0 * anyDistance, 0, false, 0.0};
        for (const BestAlignment& alignment : rough_) {
            if (alignment.rank > best * nearlyEqual) continue;
            const BestAlignment exact = lookedAtClosely(target, alignment);
            if (exact.rank < result.rank) result = exact;
        }
        return result;
    }

    BestAlignment lookedAtClosely(std::size_t target, BestAlignment alignment) const {
        const Facing facing = facingAt(alignment.shift, query_.size(), targets_.length(target));
        const Matrix& strand = alignment.isOpposite ? targets_.opposite(target) : targets_.matrix(target);
        alignment.similarity = meanSimilarity(query_, strand, alignment.shift);
        alignment.rank = rankOf(facing, distanceOf(alignment.similarity, facing.columns));
        return alignment;
    }

    /// Works out the distances of the alignments by ascending shift, in single precision.
    void addDistances(std::size_t target, bool isOpposite, std::size_t shifts, std::vector<float>& sums) {
        // Each row has the distances of one query column from the columns of the target, between zeros.
        const std::size_t columns = query_.size();
        const std::size_t padded = targets_.paddedLength(target);
        const std::size_t stride = columns + padded + columns + elementsPastEnd;
        if (rows_.size() != stride * columns + elementsPastEnd || columns != rowCount_) {
            rowCount_ = columns;
            rows_.assign(stride * columns + elementsPastEnd, 0.0F);
        }
        const BaseRows<float> strand = targets_.strand(target, isOpposite);
        for (std::size_t k = 0; k < columns; ++k) {
            steps_.measureFinely(query_[k], strand, targets_.weights(target), padded,
                                 rows_.data() + k * stride + columns);
        }
        sums.resize(shifts + elementsPastEnd);
        steps_.addDiagonals(rows_.data() + leastColumns, stride, columns, shifts, sums.data());
    }

    SignificantMatch matchOf(std::size_t target, const BestAlignment& best) {
        SignificantMatch match;
        match.target = target;
        match.shift = best.shift;
        match.isOpposite = best.isOpposite;
        match.similarity = best.similarity;
        match.overlap = facingAt(best.shift, query_.size(), targets_.length(target)).columns;
        if (!hasTables_) return match;
        match.alignment = best.rank;
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
        makeListedTables();
        for (std::size_t n = 0; n < request_->listed.size(); ++n) {
            const ListedAlignment& listed = request_->listed[n];
            const Facing facing = facingOf(listed);
            const WindowTables& tables = isOneReversed(listed) ? listedTables_ : tables_;
            result.listed[n].alignment =
                tables.probability(static_cast<std::size_t>(facing.first), static_cast<std::size_t>(facing.columns),
                                   distanceOf(listed.similarity, facing.columns));
        }
    }

    static bool isOneReversed(const ListedAlignment& listed) {
        return listed.isQueryReversed != listed.isTargetReversed;
    }

    /// The columns of the query as it is given. To swap a pair in a column of a reversed query changes the distances as
    /// it does to swap the pair in the other column, so the tables of the query as it is serve both of its strands.
    Facing facingOf(const ListedAlignment& listed) const {
        Facing facing = facingAt(listed.shift, query_.size(), targets_.length(listed.target));
        if (listed.isQueryReversed) facing.first = static_cast<int>(query_.size()) - facing.first - facing.columns;
        return facing;
    }

    /// For the alignments of the request that have one motif reversed: from each first column on as far as they go.
    void makeListedTables() {
        struct Needed {
            int columns = 0;
            double distance = 0.0;
        };
        std::map<int, Needed> needed;
        for (const ListedAlignment& listed : request_->listed) {
            if (!isOneReversed(listed)) continue;
            const Facing facing = facingOf(listed);
            Needed& window = needed[facing.first];
            window.columns = std::max(window.columns, facing.columns);
            window.distance = std::max(window.distance, distanceOf(listed.similarity, facing.columns));
        }
        if (needed.empty()) return;
        listedShares_ = distanceSharesOf(query_, targets_, Background::onePairSwapped, leftOut_, steps_);
        listedTables_.start(listedShares_, stepsPerOne(query_.size()), steps_);
        for (const auto& [first, window] : needed) {
            listedTables_.addWindows(static_cast<std::size_t>(first), static_cast<std::size_t>(window.columns),
                                     leastColumns, window.distance);
        }
    }

    const ColumnPool& targets_;
    VectorSteps steps_;
    const QueryRequest* request_ = nullptr;
    const std::size_t* leftOut_ = nullptr;
    bool hasTables_ = false;
    Matrix query_;
    std::vector<DistanceShares> shares_, listedShares_;
    WindowTables tables_, listedTables_;
    std::size_t rowCount_ = 0;
    std::vector<float> rows_, sums_, oppositeSums_;
    std::vector<std::vector<float>> frequentDistances_;  // by the length of the target
    std::vector<BestAlignment> rough_;
    std::vector<SignificantMatch> matches_;
    std::vector<double> pValues_, qValues_;
};

}  // namespace

Facing facingAt(int shift, std::size_t queryColumns, std::size_t targetColumns) {
    const int first = std::max(0, -shift);
    return {first, std::min(static_cast<int>(queryColumns), static_cast<int>(targetColumns) - shift) - first};
}

double distanceOf(double similarity, int columns) {
    return basesPerColumn * columns * (1.0 - similarity);
}

std::vector<DistanceShares> distanceSharesOf(const Matrix& query, const ColumnPool& targets, Background background,
                                             const std::size_t* leftOut, const VectorSteps& steps) {
    const int fineness = stepsPerOne(query.size());
    std::vector<DistanceShares> shares;
    std::vector<std::uint32_t> counts;
    for (const Column& column : query) {
        counts.assign(2 * static_cast<std::size_t>(fineness) + 1, 0);
        targets.countDistances(column, background, leftOut, fineness, counts, steps);
        shares.push_back(sharesOf(counts));
    }
    return shares;
}

int stepsPerOne(std::size_t queryColumns) {
    constexpr std::array<std::pair<std::size_t, int>, 4> fineness = {{{12, 128}, {16, 96}, {24, 64}, {40, 32}}};
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
    const auto addCells = [&](auto add) {
        for (int k = facing.first; k < facing.first + facing.columns; ++k) {
            const Column& one = query[static_cast<std::size_t>(k)];
            const int faced = k + shift;
            const Column& other = target[static_cast<std::size_t>(faced)];
            for (std::size_t base = 0; base < one.size(); ++base) add(1.0 - std::fabs(one[base] - other[base]));
        }
    };
    if (facing.columns <= static_cast<int>(mostKernelColumns)) {
        std::int64_t sum = 0;
        addCells([&](double cell) { sum += static_cast<std::int64_t>(cell / kernel::unit); });
        return kernel::meanScore(sum, facing.columns);
    }
    long double sum = 0.0L;
    addCells([&](double cell) { sum += cell; });
    return static_cast<double>(sum / (static_cast<long double>(basesPerColumn) * facing.columns));
}

std::vector<QueryResult> significanceOf(std::span<const QueryRequest> requests, const ColumnPool& targets,
                                        std::size_t best, KernelCode code, const MatchVisitor& visit) {
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
            if (visit) visit(place, work.allMatches());
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
