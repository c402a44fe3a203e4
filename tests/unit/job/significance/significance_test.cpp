#include "job/significance/significance.h"

#include <gtest/gtest.h>
#include <omp.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "input/getRevCompMotif.h"
#include "job/significance/window_tables.h"
#include "scan/plain_score.h"
#include "support/random_motifs.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

using varnolix::testing::motifOfMatrix;
using varnolix::testing::motifOfText;
using varnolix::testing::RandomMotifs;

constexpr std::size_t allTargets = 1000000;

QueryResult resultOf(const Matrix& query, std::span<const data> targets, std::size_t best = allTargets) {
    QueryRequest request;
    request.query = &query;
    return significanceOf(std::vector{request}, ColumnPool(targets), best).front();
}

/// Motifs of fine values, most of them with a clear base.
std::vector<data> sharpMotifs(int count, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    std::gamma_distribution<double> weight(0.3);
    std::vector<data> motifs;
    for (int id = 1; id <= count; ++id) {
        Matrix matrix(6 + random() % 10);
        for (Column& column : matrix) {
            for (double& value : column) value = weight(random) + 1e-3;
            column = frequencies(column);
        }
        motifs.push_back(motifOfMatrix(id, matrix));
    }
    return motifs;
}

std::vector<QueryRequest> requestsOf(std::span<const data> motifs) {
    std::vector<QueryRequest> requests(motifs.size());
    for (std::size_t n = 0; n < motifs.size(); ++n) {
        requests[n].query = &motifs[n].matrix;
        requests[n].self = n;
    }
    return requests;
}

// The example of docs/significance.md.
TEST(SignificanceTest, FollowsTheExampleOfTheManual) {
    const std::vector<data> targets = {motifOfText(1, "AACG"), motifOfText(2, "AATA")};
    const QueryResult result = resultOf(targets[0].matrix, targets);
    ASSERT_EQ(result.best.size(), 2);
    const SignificantMatch& equal = result.best[0];
    EXPECT_EQ(equal.target, 0);
    EXPECT_EQ(equal.shift, 0);
    EXPECT_FALSE(equal.isOpposite);
    EXPECT_EQ(equal.overlap, 4);
    EXPECT_EQ(equal.similarity, 1.0);
    EXPECT_NEAR(equal.alignment, 9.0 / 4096, 1e-7);  // 6/16 6/16 2/16 2/16
    EXPECT_NEAR(equal.pair.pValue, 0.0043897, 1e-7);
    EXPECT_NEAR(equal.pair.eValue, 0.0087794, 2e-7);
    EXPECT_NEAR(equal.pair.qValue, 0.0087794, 2e-7);
    const SignificantMatch& other = result.best[1];
    EXPECT_EQ(other.similarity, 0.75);
    EXPECT_NEAR(other.alignment, 0.256592, 1e-5);
    EXPECT_NEAR(other.pair.pValue, 0.447345, 1e-5);
    EXPECT_NEAR(other.pair.qValue, 0.447345, 1e-5);
    EXPECT_EQ(result.backgroundColumns, 16);
    EXPECT_EQ(result.comparedTargets, 2);
}

TEST(SignificanceTest, KeepsSmallProbabilitiesOfTheBestOfMany) {
    EXPECT_DOUBLE_EQ(bestOfAlignments(1e-40, 46), 46e-40);
    EXPECT_DOUBLE_EQ(bestOfAlignments(0.5, 2), 0.75);
    EXPECT_EQ(bestOfAlignments(1.0, 2), 1.0);
    EXPECT_EQ(alignmentsOf(4, 4), 2.0);
    EXPECT_EQ(alignmentsOf(10, 8), 22.0);
}

TEST(SignificanceTest, WorksOutFalseDiscoveryRates) {
    const std::vector<double> rates = falseDiscoveryRates(std::vector{0.04, 0.01, 0.5, 0.03});
    EXPECT_DOUBLE_EQ(rates[1], 0.04);
    EXPECT_DOUBLE_EQ(rates[0], 0.04 * 4 / 3);
    EXPECT_DOUBLE_EQ(rates[3], 0.04 * 4 / 3);
    EXPECT_DOUBLE_EQ(rates[2], 0.5);
    EXPECT_TRUE(falseDiscoveryRates({}).empty());
}

TEST(SignificanceTest, ScoresLikeTheReports) {
    RandomMotifs random(5);
    for (int n = 0; n < 300; ++n) {
        const Matrix query = random.matrix(4 + random.pick(10));
        const Matrix target = random.matrix(4 + random.pick(10));
        const int shift =
            4 - static_cast<int>(query.size()) + static_cast<int>(random.pick(query.size() + target.size() - 7));
        // Only the strands that are given can be alike.
        const std::size_t columns = std::max(query.size(), target.size());
        const Matrix high(columns, Column{9, 9, 9, 9});
        const Matrix low(columns, Column{-9, -9, -9, -9});
        const AlignmentScore score = plainScore({query, high}, {target, low}, shift, 1.0, Direction::forward);
        ASSERT_EQ(score.orientation, Orientation::bothOriginal);
        EXPECT_EQ(meanSimilarity(query, target, shift), score.score);
    }
}

TEST(SignificanceTest, FindsTheLeastProbableAlignmentOfAll) {
    const std::vector<data> motifs = sharpMotifs(40, 6);
    const ColumnPool pool(motifs);
    for (const std::size_t self : {0U, 13U, 39U}) {
        const Matrix& query = motifs[self].matrix;
        QueryRequest request;
        request.query = &query;
        const QueryResult result = significanceOf(std::vector{request}, pool, allTargets).front();
        // Tables of its own for the plain walk.
        const int steps = stepsPerOne(query.size());
        std::vector<DistanceShares> shares;
        for (const Column& column : query) {
            std::vector<std::uint32_t> counts(2 * static_cast<std::size_t>(steps) + 1);
            pool.countDistances(column, Background::bothStrands, nullptr, steps, counts, vectorSteps());
            shares.push_back(sharesOf(counts));
        }
        WindowTables tables;
        tables.start(shares, steps, vectorSteps());
        for (std::size_t first = 0; first + 4 <= query.size(); ++first) {
            tables.addWindows(first, query.size() - first, 4, 1e12);
        }
        ASSERT_EQ(result.best.size(), motifs.size());
        for (const SignificantMatch& match : result.best) {
            double best = 2.0;
            const Matrix& target = motifs[match.target].matrix;
            for (const Matrix& strand : {target, oppositeStrand(target)}) {
                for (int shift = 4 - static_cast<int>(query.size()); shift + 4 <= static_cast<int>(target.size());
                     ++shift) {
                    const int first = std::max(0, -shift);
                    const int columns =
                        std::min(static_cast<int>(query.size()), static_cast<int>(target.size()) - shift) - first;
                    best = std::min(
                        best, tables.probability(static_cast<std::size_t>(first), static_cast<std::size_t>(columns),
                                                 4.0 * columns * (1.0 - meanSimilarity(query, strand, shift))));
                }
            }
            EXPECT_EQ(match.alignment, best) << match.target;
            EXPECT_EQ(match.similarity,
                      meanSimilarity(query, match.isOpposite ? oppositeStrand(target) : target, match.shift));
        }
    }
}

TEST(SignificanceTest, ListsByProbabilityThenSimilarityThenPlace) {
    std::vector<data> motifs = sharpMotifs(30, 7);
    motifs.push_back(motifs[3]);
    motifs.push_back(motifs[3]);
    const QueryResult result = resultOf(motifs[0].matrix, motifs);
    for (std::size_t n = 1; n < result.best.size(); ++n) {
        const SignificantMatch& before = result.best[n - 1];
        const SignificantMatch& after = result.best[n];
        EXPECT_TRUE(before.pair.pValue < after.pair.pValue ||
                    (before.pair.pValue == after.pair.pValue &&
                     (before.similarity > after.similarity ||
                      (before.similarity == after.similarity && before.target < after.target))));
    }
    EXPECT_EQ(resultOf(motifs[0].matrix, motifs, 5).best.size(), 5);
}

TEST(SignificanceTest, TheQueryItselfIsTheSurestOfItsList) {
    const std::vector<data> motifs = sharpMotifs(60, 8);
    for (const data& motif : motifs) {
        const QueryResult result = resultOf(motif.matrix, motifs, 1);
        EXPECT_EQ(result.best[0].target, static_cast<std::size_t>(motif.matrixID) - 1);
        EXPECT_EQ(result.best[0].similarity, 1.0);
        EXPECT_LT(result.best[0].pair.qValue, 0.05);
    }
}

TEST(SignificanceTest, AFlatTargetMatchesNothing) {
    std::vector<data> motifs = sharpMotifs(60, 9);
    const std::size_t flat = motifs.size();
    motifs.push_back(motifOfMatrix(61, Matrix(10, Column{0.25, 0.25, 0.25, 0.25})));
    const ColumnPool pool(motifs);
    for (std::size_t n = 0; n < flat; ++n) {
        QueryRequest request;
        request.query = &motifs[n].matrix;
        EXPECT_GT(pairProbabilities(request, pool)[flat], 0.05);
    }
}

TEST(SignificanceTest, AHigherSimilarityAtTheSamePlaceIsNeverLessSure) {
    // The same target, drawn step by step away from the query.
    const std::vector<data> motifs = sharpMotifs(40, 10);
    const Matrix& query = motifs[0].matrix;
    const ColumnPool pool(motifs);
    QueryRequest request;
    request.query = &query;
    for (int part = 0; part <= 1000; ++part) {
        request.listed.push_back({1, 0, false, false, 1.0 - part * 0.0005});
    }
    const auto listed = significanceOf(std::vector{request}, pool, 0).front().listed;
    for (std::size_t n = 1; n < listed.size(); ++n) ASSERT_GE(listed[n].alignment, listed[n - 1].alignment);
}

TEST(SignificanceTest, NearlyEqualTargetsAreNearlyEquallySure) {
    std::vector<data> motifs = sharpMotifs(80, 11);
    data moved = motifs[1];
    for (Column& column : moved.matrix) {
        const auto most = static_cast<std::size_t>(std::max_element(column.begin(), column.end()) - column.begin());
        column[most] -= 1e-6;
        column[(most + 1) % 4] += 1e-6;
    }
    motifs.push_back(moved);
    const ColumnPool pool(motifs);
    for (const data& motif : motifs) {
        QueryRequest request;
        request.query = &motif.matrix;
        const std::vector<double> pValues = pairProbabilities(request, pool);
        EXPECT_NEAR(std::log(pValues[1]), std::log(pValues[80]), 0.02);
    }
}

TEST(SignificanceTest, IsTheSameForEveryNumberOfThreadsAndProcessor) {
    const std::vector<data> motifs = sharpMotifs(25, 12);
    const ColumnPool pool(motifs);
    std::vector<QueryRequest> requests = requestsOf(motifs);
    for (QueryRequest& request : requests) request.listed = {{3, 1, true, false, 0.8}, {4, 0, false, true, 0.9}};
    const int threads = omp_get_max_threads();
    omp_set_num_threads(1);
    const std::vector<QueryResult> expected = significanceOf(requests, pool, 10, KernelCode::portable);
    for (const KernelCode code : kernelCodes()) {
        for (const int count : {1, 2, 3}) {
            omp_set_num_threads(count);
            const std::vector<QueryResult> results = significanceOf(requests, pool, 10, code);
            for (std::size_t n = 0; n < results.size(); ++n) {
                ASSERT_EQ(results[n].best.size(), expected[n].best.size());
                for (std::size_t k = 0; k < results[n].best.size(); ++k) {
                    ASSERT_EQ(results[n].best[k].target, expected[n].best[k].target);
                    ASSERT_EQ(results[n].best[k].pair.pValue, expected[n].best[k].pair.pValue);
                    ASSERT_EQ(results[n].best[k].pair.qValue, expected[n].best[k].pair.qValue);
                }
                for (std::size_t k = 0; k < 2; ++k) {
                    ASSERT_EQ(results[n].listed[k].alignment, expected[n].listed[k].alignment);
                }
            }
        }
    }
    omp_set_num_threads(threads);
}

TEST(SignificanceTest, AMotifOfTheListIsNotItsOwnTarget) {
    const std::vector<data> motifs = sharpMotifs(20, 13);
    const std::vector<QueryResult> results = significanceOf(requestsOf(motifs), ColumnPool(motifs), allTargets);
    for (std::size_t n = 0; n < motifs.size(); ++n) {
        EXPECT_EQ(results[n].comparedTargets, 19);
        EXPECT_EQ(results[n].best.size(), 19);
        for (const SignificantMatch& match : results[n].best) {
            EXPECT_NE(match.target, n);
            EXPECT_DOUBLE_EQ(match.pair.eValue, 19 * match.pair.pValue);
        }
    }
}

// Listed alignments, with the strands as the reports reverse them, against all windows of the columns that the
// reports would compare.
TEST(SignificanceTest, AlignmentsOfTheReportsAreMeasuredOnTheirStrands) {
    std::vector<data> motifs = sharpMotifs(6, 14);
    motifs[0].matrix.resize(4);
    motifs[1].matrix.resize(4);
    const Matrix query = motifs[0].matrix;
    const Matrix target = motifs[1].matrix;
    const ColumnPool pool(motifs);
    for (const bool isQueryReversed : {false, true}) {
        for (const bool isTargetReversed : {false, true}) {
            const Matrix one = isQueryReversed ? getRevCompMotif(query) : query;
            const Matrix other = isTargetReversed ? getRevCompMotif(target) : target;
            QueryRequest request;
            request.query = &query;
            const double similarity = meanSimilarity(one, other, 0);
            request.listed = {{1, 0, isQueryReversed, isTargetReversed, similarity}};
            const double found = significanceOf(std::vector{request}, pool, 0).front().listed[0].alignment;

            // Each column of the background on either strand, as the reports would compare it.
            std::vector<std::vector<double>> distances(4);
            for (std::size_t k = 0; k < 4; ++k) {
                for (const data& motif : motifs) {
                    for (const Matrix& strand : {motif.matrix, oppositeStrand(motif.matrix)}) {
                        for (const Column& column : isTargetReversed ? getRevCompMotif(strand) : strand) {
                            distances[k].push_back(4.0 - 4.0 * meanSimilarity({one[k]}, {column}, 0));
                        }
                    }
                }
                std::sort(distances[k].begin(), distances[k].end());
            }
            const auto windows = [&](double limit) {
                double count = 0.0;
                for (const double first : distances[0]) {
                    for (const double second : distances[1]) {
                        for (const double third : distances[2]) {
                            const double rest = limit - first - second - third;
                            count +=
                                static_cast<double>(std::upper_bound(distances[3].begin(), distances[3].end(), rest) -
                                                    distances[3].begin());
                        }
                    }
                }
                return count / std::pow(static_cast<double>(distances[0].size()), 4.0);
            };
            const double seen = 16.0 * (1.0 - similarity);
            EXPECT_GE(found, windows(seen - 1e-9) * (1 - 1e-9));
            EXPECT_LE(found, windows(seen + 5.0 / stepsPerOne(4) + 1e-4));
        }
    }
}

TEST(SignificanceTest, OddMotifsGetValuesToo) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    std::vector<data> motifs = sharpMotifs(20, 15);
    motifs[2].matrix[1].fill(none);
    motifs[3].matrix.assign(3, Column{1, 0, 0, 0});
    motifs[4].matrix.clear();
    motifs[5].matrix.assign(8, Column{0.25, 0.25, 0.25, 0.25});
    motifs[6].matrix.assign(mostQueryColumns + 1, Column{0.5, 0.5, 0, 0});
    const std::vector<QueryResult> results = significanceOf(requestsOf(motifs), ColumnPool(motifs), allTargets);
    for (std::size_t n = 0; n < motifs.size(); ++n) {
        const bool isTooShort = n == 3 || n == 4;
        EXPECT_EQ(results[n].best.size(), isTooShort ? 0 : 17) << n;
        for (const SignificantMatch& match : results[n].best) {
            EXPECT_GE(match.pair.pValue, leastProbability);
            EXPECT_LE(match.pair.pValue, 1.0);
            EXPECT_GE(match.similarity, 0.0);
            if (n == 6) {
                EXPECT_EQ(match.pair.pValue, 1.0);
            }
        }
    }
    // Without any other motif there is nothing to compare.
    EXPECT_TRUE(significanceOf(requestsOf(std::span(motifs).first(1)), ColumnPool(std::span(motifs).first(1)), 5)
                    .front()
                    .best.empty());
}

// The same with more queries and targets: bench/significance_check.cpp.
TEST(SignificanceTest, AsManyRandomTargetsAreAsCloseAsItSays) {
    const std::vector<data> motifs = sharpMotifs(100, 16);
    std::vector<Column> columns;
    for (const data& motif : motifs) {
        columns.insert(columns.end(), motif.matrix.begin(), motif.matrix.end());
        const Matrix opposite = oppositeStrand(motif.matrix);
        columns.insert(columns.end(), opposite.begin(), opposite.end());
    }
    std::mt19937_64 random(17);
    std::vector<data> targets(20000);
    for (data& target : targets) {
        target.matrix.resize(6 + random() % 10);
        for (Column& column : target.matrix) column = columns[random() % columns.size()];
    }
    const ColumnPool pool(targets);
    for (std::size_t n = 0; n < 10; ++n) {
        QueryRequest request;
        request.query = &motifs[n].matrix;
        std::vector<double> pValues = pairProbabilities(request, pool);
        for (const double level : {0.05, 0.01, 0.001}) {
            const double count = static_cast<double>(
                std::count_if(pValues.begin(), pValues.end(), [&](double p) { return p <= level; }));
            const double expected = level * static_cast<double>(targets.size());
            EXPECT_LE(count, expected + 4.0 * std::sqrt(expected)) << n << ' ' << level;
            EXPECT_GE(count, 0.4 * expected - 4.0 * std::sqrt(expected)) << n << ' ' << level;
        }
    }
}

}  // namespace
}  // namespace varnolix::job
