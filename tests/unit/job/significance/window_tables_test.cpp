#include "job/significance/window_tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <random>

namespace varnolix::job {
namespace {

constexpr double anyDistance = 1e12;

/// The distances of a column from each of the background, all equally likely.
using Distances = std::vector<double>;

DistanceShares shares(const Distances& distances, int stepsPerOne) {
    std::vector<std::uint32_t> counts(2 * static_cast<std::size_t>(stepsPerOne) + 1);
    for (const double distance : distances) ++counts[static_cast<std::size_t>(distance * stepsPerOne)];
    return sharesOf(counts);
}

/// Tables of all windows of the columns.
struct Tables {
    Tables(const std::vector<Distances>& columns, int stepsPerOne, KernelCode code = fastestKernelCode()) {
        for (const Distances& column : columns) ofColumns.push_back(shares(column, stepsPerOne));
        tables.start(ofColumns, stepsPerOne, vectorSteps(code));
        for (std::size_t first = 0; first < columns.size(); ++first) {
            tables.addWindows(first, columns.size() - first, 1, anyDistance);
        }
    }
    std::vector<DistanceShares> ofColumns;
    WindowTables tables;
};

/// The probability of each sum of one distance of each column, and of all smaller ones.
std::map<double, double> sumsOf(std::span<const Distances> columns) {
    std::map<double, double> sums{{0.0, 1.0}};
    for (const Distances& column : columns) {
        std::map<double, double> next;
        for (const auto& [sum, share] : sums) {
            for (const double distance : column) {
                next[sum + distance] += share / static_cast<double>(column.size());
            }
        }
        sums = next;
    }
    double all = 0.0;
    for (auto& [sum, share] : sums) share = all += share;
    return sums;
}

double atMost(const std::map<double, double>& sums, double distance) {
    const auto above = sums.upper_bound(distance);
    return above == sums.begin() ? 0.0 : std::min(1.0, std::prev(above)->second);
}

std::vector<Distances> randomColumns(std::size_t columns, std::size_t background, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> distance(0.0, 2.0);
    std::vector<Distances> result(columns, Distances(background));
    for (Distances& column : result) {
        for (double& value : column) value = distance(random);
    }
    return result;
}

TEST(WindowTablesTest, CountsWholeStepsExactly) {
    // Two columns that are equal in one case of four, and else as different as can be.
    const Tables tables({{0, 2, 2, 2}, {0, 2, 2, 2}}, 64);
    EXPECT_NEAR(tables.tables.probability(0, 2, 0.0), 1.0 / 16, 1e-9);
    EXPECT_NEAR(tables.tables.probability(0, 2, 1.9), 1.0 / 16, 1e-9);
    EXPECT_NEAR(tables.tables.probability(0, 2, 2.0), 7.0 / 16, 1e-5);
    EXPECT_EQ(tables.tables.probability(0, 2, 4.0), 1.0);
    EXPECT_NEAR(tables.tables.probability(1, 1, 0.0), 1.0 / 4, 1e-9);
}

TEST(WindowTablesTest, LiesBetweenTheExactProbabilityAndTheBound) {
    for (const int stepsPerOne : {16, 32, 64, 128}) {
        const std::vector<Distances> columns = randomColumns(5, 7, 11);
        const Tables tables(columns, stepsPerOne);
        for (std::size_t first = 0; first < columns.size(); ++first) {
            for (std::size_t length = 1; first + length <= columns.size(); ++length) {
                const auto sums = sumsOf(std::span(columns).subspan(first, length));
                const double margin = static_cast<double>(length + 1) / stepsPerOne + 1e-5;
                for (const auto& [sum, share] : sums) {
                    const double exact = std::min(1.0, share);
                    const double found = tables.tables.probability(first, length, sum);
                    ASSERT_GE(found, exact * (1.0 - 1e-12)) << stepsPerOne << ' ' << first << ' ' << length;
                    // Sums beyond all but 1 in 1024 may be counted lower.
                    const double bound = atMost(sums, sum + margin);
                    ASSERT_LE(found, bound * (1.0 + 1e-9) + (bound > 0.9 ? 0.1 : 0.0))
                        << stepsPerOne << ' ' << first << ' ' << length;
                }
            }
        }
    }
}

TEST(WindowTablesTest, NeverFallsWithTheDistance) {
    const std::vector<Distances> columns = randomColumns(12, 50, 5);
    const Tables tables(columns, 128);
    double last = 0.0;
    for (double distance = 0.0; distance < 25.0; distance += 0.0037) {
        const double probability = tables.tables.probability(0, 12, distance);
        ASSERT_GE(probability, last) << distance;
        ASSERT_GE(probability, leastProbability);
        ASSERT_LE(probability, 1.0);
        last = probability;
    }
    EXPECT_EQ(last, 1.0);
}

TEST(WindowTablesTest, ChangesLittleWithTheDistance) {
    const std::vector<Distances> columns = randomColumns(12, 50, 6);
    const Tables tables(columns, 128);
    for (double distance = 3.0; distance < 24.0; distance += 0.0137) {
        const double one = tables.tables.probability(0, 12, distance);
        const double other = tables.tables.probability(0, 12, distance + 1e-6);
        ASSERT_LT(other / one, 1.001) << distance;
    }
}

TEST(WindowTablesTest, KeepsLongTails) {
    // Each column is met by one of a thousand.
    Distances column(1000, 1.5);
    column[0] = 0.0;
    const Tables tables(std::vector<Distances>(30, column), 32);
    EXPECT_NEAR(std::log10(tables.tables.probability(0, 30, 0.0)), -90.0, 1e-6);
    EXPECT_NEAR(std::log10(tables.tables.probability(3, 20, 0.0)), -60.0, 1e-6);
}

TEST(WindowTablesTest, IsNeverZeroNorLessThanAllColumnsAllow) {
    Distances column(100000, 1.9);
    column[0] = 0.0;
    const Tables tables(std::vector<Distances>(100, column), 16);
    EXPECT_GE(tables.tables.probability(0, 100, 0.0), leastProbability);
    EXPECT_LT(tables.tables.probability(0, 100, 0.0), 1e-200);
    // Closer than anything in the background.
    const Tables far({{1.0, 1.5}, {1.0, 2.0}}, 16);
    EXPECT_EQ(far.tables.probability(0, 2, 0.5), leastProbability);
}

TEST(WindowTablesTest, GivesTheSameForSumsWithinTheAskedDistance) {
    const std::vector<Distances> columns = randomColumns(10, 40, 8);
    const Tables all(columns, 64);
    WindowTables some;
    some.start(all.ofColumns, 64, vectorSteps());
    some.addWindows(0, 10, 4, 3.3);
    for (const double distance : {0.5, 1.0, 2.0, 3.0, 3.3}) {
        EXPECT_EQ(some.probability(0, 10, distance), all.tables.probability(0, 10, distance)) << distance;
        EXPECT_EQ(some.probability(0, 4, distance), all.tables.probability(0, 4, distance)) << distance;
    }
}

TEST(WindowTablesTest, TellsWhereAlignmentsAreFrequent) {
    const std::vector<Distances> columns = randomColumns(10, 40, 9);
    const Tables tables(columns, 64);
    const double from = tables.tables.frequentDistance(2, 6);
    EXPECT_GE(tables.tables.probability(2, 6, from), frequentShare);
    EXPECT_LT(tables.tables.probability(2, 6, from - 2.0 / 64), frequentShare);
}

TEST(WindowTablesTest, IsTheSameOnAllProcessors) {
    const std::vector<Distances> columns = randomColumns(14, 300, 10);
    const Tables portable(columns, 128, KernelCode::portable);
    for (const KernelCode code : kernelCodes()) {
        const Tables tables(columns, 128, code);
        for (double distance = 0.0; distance < 20.0; distance += 0.1) {
            ASSERT_EQ(tables.tables.probability(0, 14, distance), portable.tables.probability(0, 14, distance));
            ASSERT_EQ(tables.tables.probability(5, 7, distance), portable.tables.probability(5, 7, distance));
        }
    }
}

}  // namespace
}  // namespace varnolix::job
