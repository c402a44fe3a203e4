// Compares the p-values with what they claim, by drawing random targets. Prints two tables:
//
//   1. one alignment: the share of random windows that come as close to a query as each of some distances, against the
//      probability that is looked up for it
//   2. a pair: how the p-values of random targets are spread, which should be evenly
//
// significance_check [WINDOWS [QUERIES [TARGETS]]]: random windows for each query (1000000), queries (50), random
// targets for each query in the second table (20000). Needs a minute. The seed is fixed.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "job/significance/significance.h"
#include "job/significance/window_tables.h"
#include "motif_source.h"

namespace varnolix::bench {

namespace {

constexpr std::size_t backgroundMotifs = 500;

struct Sizes {
    std::size_t windows = 1000000;
    std::size_t queries = 50;
    std::size_t targets = 20000;
};

std::vector<Column> columnsOf(std::span<const data> motifs) {
    std::vector<Column> columns;
    for (const data& motif : motifs) {
        columns.insert(columns.end(), motif.matrix.begin(), motif.matrix.end());
        const Matrix opposite = job::oppositeStrand(motif.matrix);
        columns.insert(columns.end(), opposite.begin(), opposite.end());
    }
    return columns;
}

double distance(const Column& one, const Column& other) {
    double sum = 0.0;
    for (std::size_t base = 0; base < one.size(); ++base) sum += std::fabs(one[base] - other[base]);
    return sum;
}

/// The distances of random windows from the query, ascending.
std::vector<double> randomDistances(const Matrix& query, std::span<const Column> columns, std::size_t windows,
                                    std::mt19937_64& random) {
    std::vector<std::vector<double>> distances(query.size());
    for (std::size_t k = 0; k < query.size(); ++k) {
        for (const Column& column : columns) distances[k].push_back(distance(query[k], column));
    }
    std::uniform_int_distribution<std::size_t> pick(0, columns.size() - 1);
    std::vector<double> sums(windows);
    for (double& sum : sums) {
        for (const std::vector<double>& row : distances) sum += row[pick(random)];
    }
    std::sort(sums.begin(), sums.end());
    return sums;
}

double lookedUp(const Matrix& query, const job::ColumnPool& pool, std::span<const double> sums,
                std::vector<double>& probabilities) {
    const int stepsPerOne = job::stepsPerOne(query.size());
    std::vector<job::DistanceShares> shares;
    for (const Column& column : query) {
        std::vector<std::uint32_t> counts(2 * static_cast<std::size_t>(stepsPerOne) + 1);
        pool.countDistances(column, job::Background::bothStrands, nullptr, stepsPerOne, counts, job::vectorSteps());
        shares.push_back(job::sharesOf(counts));
    }
    job::WindowTables tables;
    tables.start(shares, stepsPerOne, job::vectorSteps());
    tables.addWindows(0, query.size(), query.size(), 1e12);
    probabilities.clear();
    for (const double sum : sums) probabilities.push_back(tables.probability(0, query.size(), sum));
    return static_cast<double>(query.size() + 1) / stepsPerOne;
}

/// Random windows at or below the distance.
double reaching(std::span<const double> sums, double distance) {
    return static_cast<double>(std::upper_bound(sums.begin(), sums.end(), distance) - sums.begin());
}

void checkAlignments(std::span<const data> motifs, const job::ColumnPool& pool, const Sizes& sizes) {
    const std::vector<Column> columns = columnsOf(motifs);
    std::mt19937_64 random{20260101};
    constexpr std::array<double, 9> shares = {0.5, 0.2, 0.1, 0.01, 1e-3, 3e-4, 1e-4, 3e-5, 1e-5};
    struct Line {
        std::vector<double> ratios;
        int tooSmall = 0;
        int beyondBound = 0;
    };
    std::array<Line, shares.size()> lines;
    const double all = static_cast<double>(sizes.windows);
    for (std::size_t n = 0; n < sizes.queries; ++n) {
        const Matrix& query = motifs[n * motifs.size() / sizes.queries].matrix;
        const std::vector<double> sums = randomDistances(query, columns, sizes.windows, random);
        std::vector<double> observed;
        for (const double share : shares) observed.push_back(sums[static_cast<std::size_t>(share * all) - 1]);
        std::vector<double> probabilities;
        const double margin = lookedUp(query, pool, observed, probabilities);
        for (std::size_t k = 0; k < shares.size(); ++k) {
            const double count = reaching(sums, observed[k]);
            const double upper = reaching(sums, observed[k] + margin);
            lines[k].ratios.push_back(probabilities[k] * all / count);
            if (probabilities[k] * all < count - 3.0 * std::sqrt(count)) ++lines[k].tooSmall;
            if (probabilities[k] * all > upper + 3.0 * std::sqrt(upper) + all / 1024) ++lines[k].beyondBound;
        }
    }
    std::printf("1. Alignments: %zu queries, %zu random windows each\n", sizes.queries, sizes.windows);
    std::printf("%9s %9s | looked up / counted: %6s %6s %6s | too small   beyond the bound (3 errors)\n", "share",
                "1 error", "least", "median", "most");
    for (std::size_t k = 0; k < shares.size(); ++k) {
        std::vector<double>& ratios = lines[k].ratios;
        std::sort(ratios.begin(), ratios.end());
        std::printf("%9.5f %8.1f%% | %28.3f %6.3f %6.3f | %9d   %d\n", shares[k],
                    100.0 * std::sqrt((1.0 - shares[k]) / (shares[k] * all)), ratios.front(), ratios[ratios.size() / 2],
                    ratios.back(), lines[k].tooSmall, lines[k].beyondBound);
    }
}

/// Motifs of columns drawn from the background, as long as the others are.
std::vector<data> randomTargets(std::span<const data> motifs, std::size_t count) {
    const std::vector<Column> columns = columnsOf(motifs);
    std::mt19937_64 random{20260102};
    std::uniform_int_distribution<std::size_t> pick(0, columns.size() - 1);
    std::vector<data> targets(count);
    for (std::size_t n = 0; n < count; ++n) {
        targets[n].matrix.resize(motifs[n % motifs.size()].matrix.size());
        for (Column& column : targets[n].matrix) column = columns[pick(random)];
    }
    return targets;
}

void checkPairs(std::span<const data> motifs, const Sizes& sizes) {
    const std::vector<data> targets = randomTargets(motifs, sizes.targets);
    const job::ColumnPool pool(targets);
    constexpr std::array<double, 8> levels = {0.5, 0.2, 0.1, 0.05, 0.01, 1e-3, 1e-4, 1e-5};
    struct Line {
        double sum = 0.0;
        double most = 0.0;
        int tooMany = 0;
    };
    std::array<Line, levels.size()> lines;
    std::vector<double> distances;
    double tooSmall = 0.0;
    const double all = static_cast<double>(sizes.targets);
    for (std::size_t n = 0; n < sizes.queries; ++n) {
        job::QueryRequest request;
        request.query = &motifs[n * motifs.size() / sizes.queries].matrix;
        std::vector<double> pValues = job::pairProbabilities(request, pool);
        std::sort(pValues.begin(), pValues.end());
        double furthest = 0.0;
        for (std::size_t k = 0; k < pValues.size(); ++k) {
            const double share = static_cast<double>(k + 1) / all;
            furthest = std::max(furthest, std::fabs(share - pValues[k]));
            tooSmall = std::max(tooSmall, share - pValues[k]);
        }
        distances.push_back(furthest);
        for (std::size_t k = 0; k < levels.size(); ++k) {
            const double share = reaching(pValues, levels[k]) / all;
            lines[k].sum += share;
            lines[k].most = std::max(lines[k].most, share);
            // Few of the rare ones are expected, so a share is only told by three targets or more.
            if (share > levels[k] + 3.0 * std::sqrt(levels[k] / all) + 2.0 / all) ++lines[k].tooMany;
        }
    }
    std::sort(distances.begin(), distances.end());
    std::printf("\n2. Pairs: %zu queries, %zu random targets each\n", sizes.queries, sizes.targets);
    std::printf("Kolmogorov-Smirnov distance from even: median %.4f, most %.4f; of that, too small p: %.4f at most\n",
                distances[distances.size() / 2], distances.back(), tooSmall);
    std::printf("%9s | share of targets: %10s %10s | queries with more than 3 errors too many\n", "p at most", "mean",
                "most");
    for (std::size_t k = 0; k < levels.size(); ++k) {
        std::printf("%9.5f | %28.7f %10.7f | %d\n", levels[k], lines[k].sum / static_cast<double>(sizes.queries),
                    lines[k].most, lines[k].tooMany);
    }
}

void checkSignificance(const Sizes& sizes) {
    const std::vector<data> motifs = motifsOfCounts(countMatrices(backgroundMotifs));
    const job::ColumnPool pool(motifs);
    checkAlignments(motifs, pool, sizes);
    checkPairs(motifs, sizes);
}

}  // namespace
}  // namespace varnolix::bench

int main(int count, char** arguments) {
    varnolix::bench::Sizes sizes;
    if (count > 1) sizes.windows = std::strtoul(arguments[1], nullptr, 10);
    if (count > 2) sizes.queries = std::strtoul(arguments[2], nullptr, 10);
    if (count > 3) sizes.targets = std::strtoul(arguments[3], nullptr, 10);
    varnolix::bench::checkSignificance(sizes);
}
