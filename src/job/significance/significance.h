#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "job/significance/column_pool.h"
#include "job/significance/window_tables.h"
#include "run/scored_shift.h"
#include "run/shared_records.h"

// How sure a match is. The model is that of Gupta et al., Genome Biology 2007, 8:R24, for the similarity of the
// reports: window_tables.h has the probability of one alignment. A target of n columns offers a query of m columns K =
// 2 (m + n - 7) alignments of at least four columns, as the strands may run alike or opposed. With p the least
// probability among them, that of the pair is 1 - (1 - p)^K.
//
// A query costs its tables, and for each target the look-ups. Every query is worked out by one thread from the same
// numbers, so the results do not depend on the number of threads. Tested by significance_test.cpp, and against random
// targets by bench/significance_check.cpp.

namespace varnolix::job {

/// An alignment that a report lists.
struct ListedAlignment {
    std::size_t target = 0;
    int shift = 0;  ///< column k of the query, on the strand compared, faces column k + shift of the target, on its own
    bool isQueryReversed = false;  ///< as the reports reverse motifs
    bool isTargetReversed = false;
    double similarity = 0.0;  ///< the mean, 0 to 1
};

struct PairProbability {
    double pValue = 1.0;  ///< of the best alignment there is, whichever it is
    double eValue = 0.0;  ///< pValue times the number of targets that were compared
    double qValue = 1.0;  ///< by Benjamini and Hochberg, over all targets that were compared with the query
};

struct ListedProbability {
    PairProbability pair;
    double alignment = 1.0;  ///< the p-value of the alignment listed alone
};

/// One match of the list by significance. The target's other strand is the true reverse complement.
struct SignificantMatch {
    std::size_t target = 0;
    PairProbability pair;
    double alignment = 1.0;
    int shift = 0;  ///< column k of the query faces column k + shift of the target's strand
    bool isOpposite = false;
    int overlap = 0;
    double similarity = 0.0;
};

struct QueryRequest {
    const Matrix* query = nullptr;
    std::optional<std::size_t> self;  ///< its place among the targets, if it is one of them; it is left out
    std::vector<ListedAlignment> listed;
};

struct QueryResult {
    std::vector<ListedProbability> listed;  ///< in the order of the request
    std::vector<SignificantMatch> best;     ///< by p-value, then similarity, then place
    std::size_t comparedTargets = 0;
    std::size_t backgroundColumns = 0;
};

/// All targets of a query that were compared with it.
struct QueryMatches {
    std::span<const SignificantMatch> matches;  ///< in no order
    double equalTarget = 1.0;                   ///< the p-value that a target has which equals the query
};

/// Queries longer than this get no p-values: theirs are 1.
inline constexpr std::size_t mostQueryColumns = 100;

/// The fineness of the distances for a query of so many columns: how many steps a distance of 1 has.
int stepsPerOne(std::size_t queryColumns);

/// How the distances of each column of the query from those of the background are spread.
std::vector<DistanceShares> distanceSharesOf(const Matrix& query, const ColumnPool& targets, Background background,
                                             const std::size_t* leftOut, const VectorSteps& steps);

/// The columns of the query that have a partner at a shift.
struct Facing {
    int first;
    int columns;
};

Facing facingAt(int shift, std::size_t queryColumns, std::size_t targetColumns);

/// The sum of the distances of so many columns, from their mean similarity.
double distanceOf(double similarity, int columns);

/// The number of alignments of two motifs that are at least four columns long.
constexpr double alignmentsOf(std::size_t queryColumns, std::size_t targetColumns) {
    return 2.0 * (static_cast<double>(queryColumns + targetColumns) - 7.0);
}

/// The chance that the best of so many alignments is as good, in [leastProbability, 1].
double bestOfAlignments(double probability, double alignments);

/// By Benjamini and Hochberg: for each p-value, the least rate of false discoveries of a list that includes it.
std::vector<double> falseDiscoveryRates(std::span<const double> pValues);

/// The mean similarity of the columns that face each other at the shift, with the bits of the reports. Column k of the
/// query faces column k + shift of the target. All values lie in [0, 1].
double meanSimilarity(const Matrix& query, const Matrix& target, int shift);

/// Takes all matches of a query; called by the threads that work them out, in no order.
using MatchVisitor = std::function<void(std::size_t request, const QueryMatches& found)>;

/// Works out the requests, shared out among the threads.
/// @param best how many matches to list for each query
/// @param visit is handed all matches of each query, unless it is empty
std::vector<QueryResult> significanceOf(std::span<const QueryRequest> requests, const ColumnPool& targets,
                                        std::size_t best, KernelCode code = fastestKernelCode(),
                                        const MatchVisitor& visit = {});

/// The p-values of a query and all targets; of one that is not compared, 1.
std::vector<double> pairProbabilities(const QueryRequest& request, const ColumnPool& targets);

}  // namespace varnolix::job
