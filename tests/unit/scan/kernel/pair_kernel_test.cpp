#include "scan/kernel/pair_kernel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "plain/plain_scan.h"

// The kernel against the plain form, which shares no code with it: every score, label and decision, on both code paths
// and for both views of a pair. VARNOLIX_KERNEL_ROUNDS sets the number of random pools, VARNOLIX_KERNEL_SEED their
// seed.

namespace varnolix {

// Found by the printer of GoogleTest.
static void PrintTo(const ScoredShift& shift, std::ostream* out) {
    *out << "partner " << shift.partner << " shift " << shift.shift << " orientation "
         << static_cast<int>(shift.orientation) << " score " << std::hexfloat << shift.score << std::defaultfloat;
}

static bool operator==(const ScoredShift& a, const ScoredShift& b) {
    return a.partner == b.partner && a.shift == b.shift && a.orientation == b.orientation && a.walks == b.walks &&
           a.score == b.score;
}

namespace {

using Shifts = std::vector<ScoredShift>;

unsigned long numberFromEnvironment(const char* name, unsigned long fallback) {
    const char* text = std::getenv(name);
    return text == nullptr ? fallback : std::strtoul(text, nullptr, 10);
}

Matrix reverseComplement(const Matrix& matrix) {
    Matrix result(matrix.rbegin(), matrix.rend());
    for (Column& column : result) {
        std::size_t best = 0;
        for (std::size_t base = 1; base < 4; ++base) {
            if (column[base] > column[best]) {
                best = base;
            }
        }
        if (best == 0 || best == 3) {
            std::swap(column[0], column[3]);
        } else {
            std::swap(column[1], column[2]);
        }
    }
    return result;
}

data motifOf(const Matrix& matrix) {
    data motif;
    motif.matrix = matrix;
    motif.revCompMatrix = reverseComplement(matrix);
    return motif;
}

/// The shift at which the two motifs face each other: column k of i faces column k + result of j.
int shiftOf(const plain::Alignment& alignment, int iLength, int jLength) {
    const int offset = static_cast<int>(alignment.offset);
    const int ends = alignment.direction == Direction::forward ? 0 : jLength - iLength;
    const bool isForward = alignment.direction == Direction::forward;
    return ends + (isForward == (alignment.region == plain::Region::first) ? offset : -offset);
}

/// What the plain form keeps of a pair, as seen from its left motif. All records of one shift must be equal.
Shifts plainShifts(const data& left, const data& right, std::uint32_t partner, double cutoff, OuterMotif outer) {
    const bool isLeftOuter = outer == OuterMotif::left;
    const data& i = isLeftOuter ? left : right;
    const data& j = isLeftOuter ? right : left;
    std::vector<plain::Alignment> alignments;
    plain::scorePair(i, j, cutoff, alignments);
    std::map<int, std::pair<ScoredShift, int>> byShift;
    for (const plain::Alignment& alignment : alignments) {
        const int iToJ = shiftOf(alignment, static_cast<int>(i.matrix.size()), static_cast<int>(j.matrix.size()));
        ScoredShift shift{};
        shift.score = alignment.score;
        shift.partner = partner & partnerMask;
        shift.shift = isLeftOuter ? iToJ : -iToJ;
        shift.orientation = alignment.orientation;
        shift.walks = bothWalks;
        auto& [known, records] = byShift.try_emplace(shift.shift, shift, 0).first->second;
        EXPECT_EQ(known, shift) << "the walks of the plain form disagree";
        ++records;
    }
    Shifts result;
    for (const auto& [shift, known] : byShift) {
        EXPECT_GE(known.second, 2) << "a walk of the plain form has lost shift " << shift;
        result.push_back(known.first);
    }
    return result;
}

Shifts kernelShifts(const std::vector<data>& motifs, std::size_t left, std::size_t first, std::size_t last,
                    double cutoff, OuterMotif outer, KernelCode code) {
    const KernelMotifs prepared(motifs);
    Shifts kept;
    KernelScratch scratch;
    scoreShifts(prepared, left, prepared, first, last, CutoffTable(cutoff), outer, kept, scratch, code);
    return kept;
}

/// Columns and motifs with difficult rounding and many equal scores.
class NastySource {
  public:
    explicit NastySource(std::uint64_t seed) : random_(seed) {}

    std::size_t uniform(std::size_t least, std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(least, most)(random_);
    }

    bool chance(double probability) { return std::bernoulli_distribution(probability)(random_); }

    double unit() { return std::uniform_real_distribution<double>(0.0, 1.0)(random_); }

    Column column() {
        switch (uniform(0, 9)) {
            case 0:
                return normalised({unit(), unit(), unit(), unit()});
            case 1:
                return {unit(), unit(), unit(), unit()};
            case 2: {
                Column result{};
                result[uniform(0, 3)] = 1.0;
                return result;
            }
            case 3: {
                Column result{};
                result[uniform(0, 3)] += 0.5;
                result[uniform(0, 3)] += 0.5;
                return result;
            }
            case 4:
                return {0.25, 0.25, 0.25, 0.25};
            case 5: {
                Column result = {0.3333, 0.3333, 0.3333, 0.3333};
                result[uniform(0, 3)] = chance(0.5) ? 0.0 : 0.3334;
                return result;
            }
            case 6:
                return {special(), special(), special(), special()};
            case 7: {
                constexpr double steps = 16;
                return {static_cast<double>(uniform(0, 16)) / steps, static_cast<double>(uniform(0, 16)) / steps,
                        static_cast<double>(uniform(0, 16)) / steps, static_cast<double>(uniform(0, 16)) / steps};
            }
            default:
                return counted(uniform(1, 12));
        }
    }

    Matrix matrix(std::size_t length) {
        Matrix result(length);
        const std::size_t kind = uniform(0, 3);
        const Column same = column();
        for (Column& each : result) {
            each = kind == 0 ? same : kind == 1 ? counted(3) : column();
        }
        return result;
    }

    /// A matrix related to this one: the same, reversed, a part of it, or with values changed by an ulp.
    Matrix relative(const Matrix& matrix) {
        Matrix result = chance(0.3) ? reverseComplement(matrix) : matrix;
        if (chance(0.3) && result.size() > 5) {
            result.erase(result.begin(), result.begin() + static_cast<std::ptrdiff_t>(uniform(1, result.size() - 4)));
        }
        if (chance(0.5)) {
            for (Column& each : result) {
                for (double& value : each) {
                    value = chance(0.3) ? std::min(1.0, std::nextafter(value, chance(0.5) ? 2.0 : 0.0)) : value;
                }
            }
        }
        if (chance(0.2)) {
            result[uniform(0, result.size() - 1)] = column();
        }
        return result;
    }

    Matrix palindrome(std::size_t length) {
        Matrix result = matrix(length / 2);
        const Matrix rest = reverseComplement(result);
        result.insert(result.end(), rest.begin(), rest.end());
        return result;
    }

    std::vector<data> pool(std::size_t size, std::size_t mostColumns) {
        std::vector<data> motifs;
        while (motifs.size() < size) {
            const std::size_t length = uniform(2, mostColumns);
            const Matrix next = chance(0.4) && !motifs.empty() ? relative(motifs[uniform(0, motifs.size() - 1)].matrix)
                                : chance(0.1)                  ? palindrome(length)
                                                               : matrix(length);
            motifs.push_back(motifOf(next));
            if (chance(0.1)) {
                // Scoring does not require the two strands to be related.
                motifs.back().revCompMatrix = matrix(next.size());
            }
        }
        return motifs;
    }

  private:
    double special() {
        constexpr std::array<double, 14> values = {0.0, 1.0,    0.5,    0.25,    0.75,    0.3333, 0.1,
                                                   0.2, 5e-324, 1e-310, 0x1p-53, 0x1p-54, 1e-300, 1.0 - 0x1p-53};
        const double value = values[uniform(0, values.size() - 1)];
        return chance(0.3) ? std::min(1.0, std::nextafter(value, chance(0.5) ? 2.0 : 0.0)) : value;
    }

    Column counted(std::size_t sites) {
        Column counts{};
        for (std::size_t site = 0; site < sites; ++site) {
            counts[uniform(0, 3)] += 1.0;
        }
        return normalised(counts);
    }

    static Column normalised(Column column) {
        const double sum = column[0] + column[1] + column[2] + column[3];
        for (double& value : column) {
            value /= sum;
        }
        return column;
    }

    std::mt19937_64 random_;
};

/// A cutoff that equals a score of the pool or is one ulp away from it, or an ordinary cutoff.
double nastyCutoff(NastySource& source, const std::vector<data>& motifs) {
    constexpr std::array<double, 7> plainCutoffs = {0.75, 0.5, 0.85, 0.0, 1.0, 0.9, 0.625};
    const double plainCutoff = plainCutoffs[source.uniform(0, plainCutoffs.size() - 1)];
    std::vector<plain::Alignment> alignments;
    plain::scorePair(motifs[source.uniform(0, motifs.size() - 1)], motifs[source.uniform(0, motifs.size() - 1)], 0.0,
                     alignments);
    if (alignments.empty() || source.chance(0.4)) {
        return plainCutoff;
    }
    const double score = alignments[source.uniform(0, alignments.size() - 1)].score;
    return source.chance(0.6) ? score : std::nextafter(score, source.chance(0.5) ? 0.0 : 2.0);
}

/// Compares all pairs of a pool, each left motif with a range of partners.
std::size_t comparePool(const std::vector<data>& motifs, double cutoff) {
    const KernelMotifs prepared(motifs);
    const CutoffTable table(cutoff);
    std::size_t compared = 0;
    Shifts kept;
    KernelScratch scratch;
    for (std::size_t left = 0; left < motifs.size(); ++left) {
        for (const OuterMotif outer : {OuterMotif::left, OuterMotif::right}) {
            Shifts expected;
            for (std::size_t right = left + 1; right < motifs.size(); ++right) {
                const Shifts ofPair =
                    plainShifts(motifs[left], motifs[right], static_cast<std::uint32_t>(right), cutoff, outer);
                expected.insert(expected.end(), ofPair.begin(), ofPair.end());
            }
            for (const KernelCode code : kernelCodes()) {
                kept.clear();
                scoreShifts(prepared, left, prepared, left + 1, motifs.size(), table, outer, kept, scratch, code);
                EXPECT_EQ(kept, expected) << "left " << left << " outer " << static_cast<int>(outer) << " code "
                                          << static_cast<int>(code) << " cutoff " << std::hexfloat << cutoff;
                if (kept != expected) {
                    return compared;
                }
            }
            compared += expected.size();
        }
    }
    return compared;
}

void comparePools(unsigned long rounds, std::size_t poolSize, std::size_t mostColumns, std::uint64_t salt) {
    const std::uint64_t seed = numberFromEnvironment("VARNOLIX_KERNEL_SEED", 20240229) + salt;
    NastySource source(seed);
    std::size_t compared = 0;
    for (unsigned long round = 0; round < rounds; ++round) {
        SCOPED_TRACE("seed " + std::to_string(seed) + " round " + std::to_string(round));
        const std::vector<data> motifs = source.pool(poolSize, mostColumns);
        compared += comparePool(motifs, nastyCutoff(source, motifs));
        if (::testing::Test::HasFailure()) {
            return;
        }
    }
    EXPECT_GT(compared, rounds);  // otherwise nothing was kept anywhere
    ::testing::Test::RecordProperty("keptAlignments", std::to_string(compared));
}

unsigned long rounds() {
    return numberFromEnvironment("VARNOLIX_KERNEL_ROUNDS", 1000);
}

TEST(PairKernel, EqualsPlainFormOnShortMotifs) {
    comparePools(4 * rounds(), 14, 10, 0);
}

TEST(PairKernel, EqualsPlainFormOnUsualMotifs) {
    comparePools(rounds(), 14, 26, 1);
}

TEST(PairKernel, EqualsPlainFormOnLongMotifs) {
    comparePools(rounds() / 60 + 1, 8, 255, 2);
}

TEST(PairKernel, EqualsPlainFormAcrossBlocksOfPartners) {
    NastySource source(7);
    const std::vector<data> motifs = source.pool(KernelMotifs::blockSize + 40, 9);
    const std::size_t first = KernelMotifs::blockSize - 30;
    for (const KernelCode code : kernelCodes()) {
        Shifts expected;
        for (std::size_t right = first; right < motifs.size() - 3; ++right) {
            const Shifts ofPair =
                plainShifts(motifs[5], motifs[right], static_cast<std::uint32_t>(right), 0.7, OuterMotif::left);
            expected.insert(expected.end(), ofPair.begin(), ofPair.end());
        }
        EXPECT_EQ(kernelShifts(motifs, 5, first, motifs.size() - 3, 0.7, OuterMotif::left, code), expected);
    }
}

TEST(PairKernel, AppendsBehindWhatIsKept) {
    KernelScratch scratch;
    const std::vector<data> motifs(3, motifOf(Matrix(4, {1, 0, 0, 0})));
    const KernelMotifs prepared(motifs);
    Shifts kept(1);
    scoreShifts(prepared, 0, prepared, 1, 3, CutoffTable(0.75), OuterMotif::left, kept, scratch);
    ASSERT_EQ(kept.size(), 3u);
    EXPECT_EQ(kept[0], ScoredShift{});
    EXPECT_EQ(kept[1].partner, 1u);
    EXPECT_EQ(kept[2].partner, 2u);
}

TEST(PairKernel, TiesGoToTheEarlierOrientation) {
    // This motif is its own reverse complement, so all four scores are 1.
    const Matrix palindrome = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    const std::vector<data> motifs(2, motifOf(palindrome));
    for (const KernelCode code : kernelCodes()) {
        for (const OuterMotif outer : {OuterMotif::left, OuterMotif::right}) {
            const Shifts kept = kernelShifts(motifs, 0, 1, 2, 1.0, outer, code);
            ASSERT_EQ(kept.size(), 1u);
            EXPECT_EQ(kept[0].score, 1.0);
            EXPECT_EQ(kept[0].orientation, Orientation::bothOriginal);
            EXPECT_EQ(kept[0].walks, bothWalks);
        }
    }
}

TEST(PairKernel, NamesTheReversedMotifFromTheOuterView) {
    const Matrix left(4, {1, 0, 0, 0});
    const Matrix right(4, {0, 0, 0, 1});  // the reverse complement of the left one
    const std::vector<data> motifs = {motifOf(left), motifOf(right)};
    // "Left original, right reversed" and "left reversed, right original" both score 1. The former comes first if the
    // left motif is the outer one, the latter if the right one is. Either way it is called "second reversed".
    for (const KernelCode code : kernelCodes()) {
        for (const OuterMotif outer : {OuterMotif::left, OuterMotif::right}) {
            const Shifts kept = kernelShifts(motifs, 0, 1, 2, 1.0, outer, code);
            ASSERT_EQ(kept.size(), 1u);
            EXPECT_EQ(kept[0].orientation, Orientation::secondReversed);
        }
    }
}

TEST(PairKernel, SettlesScoresThatDifferByLessThanRounding) {
    // The sum of "second reversed" is one unit larger than that of "both original", but the means round to the same
    // double.
    data left = motifOf(Matrix(4, {0.5, 0.5, 0, 0}));
    data right = left;
    right.matrix[0] = {0.5 + 0x1p-52, 0.5, 0, 0};
    right.revCompMatrix = left.matrix;
    right.revCompMatrix[0] = {0.5 + 0x1p-53, 0.5, 0, 0};
    const std::vector<data> motifs = {left, right};
    for (const KernelCode code : kernelCodes()) {
        for (const OuterMotif outer : {OuterMotif::left, OuterMotif::right}) {
            EXPECT_EQ(kernelShifts(motifs, 0, 1, 2, 0.75, outer, code), plainShifts(left, right, 1, 0.75, outer));
        }
    }
}

/// A value given in steps of the filter, to which it is rounded. Values near a half step are changed the most.
double inSteps(double steps) {
    return steps / 255.0;
}

TEST(PairKernel, RoundingToLevelsMayTurnTheOrderOfRivals) {
    // Measured in steps, the original strands differ by 10 in all cells but one, which the filter rounds to 11. The
    // second reversed strand differs by slightly less than 10, rounded to 9. The one cell makes the original strands
    // better.
    constexpr double little = 1e-6;
    const double near = inSteps(100.5 - little);
    const double above = inSteps(110.5 + little);
    const double below = inSteps(90.5 + little);
    data left;
    left.matrix = Matrix(4, {near, near, near, near});
    left.revCompMatrix = left.matrix;
    data right;
    right.matrix = Matrix(4, {above, above, above, above});
    right.matrix[0][0] = inSteps(110.4);
    right.revCompMatrix = Matrix(4, {below, below, below, below});
    for (const KernelCode code : kernelCodes()) {
        const Shifts kept = kernelShifts({left, right}, 0, 1, 2, 0.9, OuterMotif::left, code);
        EXPECT_EQ(kept, plainShifts(left, right, 1, 0.9, OuterMotif::left));
        ASSERT_EQ(kept.size(), 1u);
        EXPECT_EQ(kept[0].orientation, Orientation::bothOriginal);
    }
}

TEST(PairKernel, RoundingToLevelsMayLowerAScoreOnTheCutoff) {
    const double near = inSteps(100.5 - 1e-6);
    const double above = inSteps(110.5 + 1e-6);
    data left;
    left.matrix = Matrix(4, {near, near, near, near});
    left.revCompMatrix = left.matrix;
    data right;
    right.matrix = Matrix(4, {above, above, above, above});
    right.revCompMatrix = right.matrix;
    const Shifts all = plainShifts(left, right, 1, 0.0, OuterMotif::left);
    ASSERT_EQ(all.size(), 1u);
    for (const KernelCode code : kernelCodes()) {
        EXPECT_EQ(kernelShifts({left, right}, 0, 1, 2, all[0].score, OuterMotif::left, code), all);
    }
}

TEST(PairKernel, KeepsScoreEqualToCutoff) {
    // Half of the columns agree in all cells, the others in two of four: 0.75.
    const Matrix left = {{1, 0, 0, 0}, {1, 0, 0, 0}, {1, 0, 0, 0}, {1, 0, 0, 0}};
    const Matrix right = {{1, 0, 0, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}, {0, 1, 0, 0}};
    const std::vector<data> motifs = {motifOf(left), motifOf(right)};
    for (const KernelCode code : kernelCodes()) {
        const Shifts kept = kernelShifts(motifs, 0, 1, 2, 0.75, OuterMotif::left, code);
        ASSERT_EQ(kept.size(), 1u);
        EXPECT_EQ(kept[0].score, 0.75);
        EXPECT_TRUE(kernelShifts(motifs, 0, 1, 2, std::nextafter(0.75, 1.0), OuterMotif::left, code).empty());
    }
}

TEST(PairKernel, CutoffsOutsideTheScoresKeepAllOrNothing) {
    NastySource source(3);
    const std::vector<data> motifs = {motifOf(source.matrix(9)), motifOf(source.matrix(12))};
    for (const KernelCode code : kernelCodes()) {
        for (const double cutoff : {0.0, -1.0, -std::numeric_limits<double>::infinity()}) {
            EXPECT_EQ(kernelShifts(motifs, 0, 1, 2, cutoff, OuterMotif::left, code).size(), 9u + 12u - 7u);
        }
        for (const double cutoff : {1.0 + 0x1p-52, 2.0, std::numeric_limits<double>::quiet_NaN()}) {
            EXPECT_TRUE(kernelShifts(motifs, 0, 1, 2, cutoff, OuterMotif::left, code).empty());
        }
    }
}

TEST(PairKernel, LeavesInexactAndShortMotifsAlone) {
    const Matrix good(6, {0.5, 0.5, 0, 0});
    const auto with = [&](double value) {
        Matrix result = good;
        result[3][2] = value;
        return motifOf(result);
    };
    std::vector<data> motifs = {motifOf(good),
                                with(-1e-300),
                                with(std::nextafter(1.0, 2.0)),
                                with(std::numeric_limits<double>::quiet_NaN()),
                                motifOf(Matrix(256, good[0])),
                                motifOf(Matrix(3, good[0])),
                                motifOf({}),
                                motifOf(good)};
    motifs.push_back(motifs[0]);
    motifs.back().revCompMatrix[0][0] = 2.0;
    const KernelMotifs prepared(motifs);
    const std::vector<bool> expected = {true, false, false, false, false, true, true, true, false};
    for (std::size_t motif = 0; motif < motifs.size(); ++motif) {
        EXPECT_EQ(prepared.isExact(motif), expected[motif]) << motif;
    }
    for (const KernelCode code : kernelCodes()) {
        const Shifts kept = kernelShifts(motifs, 0, 1, motifs.size(), 1.0, OuterMotif::left, code);
        EXPECT_EQ(kept, plainShifts(motifs[0], motifs[7], 7, 1.0, OuterMotif::left));
        for (std::size_t left = 1; left < 7; ++left) {
            EXPECT_TRUE(kernelShifts(motifs, left, 0, 1, 0.0, OuterMotif::left, code).empty());
        }
    }
}

TEST(PairKernel, ScoresMatricesWithoutAList) {
    KernelScratch scratch;
    NastySource source(11);
    const CutoffTable table(0.6);
    for (int round = 0; round < 200; ++round) {
        const data left = motifOf(source.matrix(source.uniform(1, 20)));
        const data right = motifOf(source.matrix(source.uniform(1, 20)));
        Shifts kept;
        EXPECT_TRUE(
            scoreShifts(left.matrix, left.revCompMatrix, right.matrix, right.revCompMatrix, table, kept, scratch));
        EXPECT_EQ(kept, plainShifts(left, right, 0, 0.6, OuterMotif::left));
    }
    const Matrix outside(5, {2, 0, 0, 0});
    const Matrix inside(5, {1, 0, 0, 0});
    Shifts kept;
    EXPECT_FALSE(scoreShifts(outside, outside, inside, inside, table, kept, scratch));
    EXPECT_FALSE(scoreShifts(inside, inside, outside, outside, table, kept, scratch));
    EXPECT_TRUE(kept.empty());
}

TEST(PairKernel, DistancesOfTheFilterDoNotOverflow) {
    // For 65 columns that differ by 1 in every cell, the distance of 65 * 4 * 255 does not fit 16 bits. What would be
    // left of it is less than the distance of the near motif, which would then be dropped.
    for (const std::size_t columns : {63U, 64U, 65U, 66U, 128U, 130U}) {
        const Matrix ones(columns, Column{1, 1, 1, 1});
        const Matrix near(columns, Column{0.97, 0.97, 0.97, 0.97});
        const Matrix zeros(columns, Column{0, 0, 0, 0});
        std::vector<data> motifs(2);
        motifs[0].matrix = motifs[0].revCompMatrix = ones;
        motifs[1].matrix = near;
        motifs[1].revCompMatrix = zeros;
        for (const double cutoff : {0.0, 0.5, 0.9}) {
            const Shifts expected = plainShifts(motifs[0], motifs[1], 1, cutoff, OuterMotif::left);
            EXPECT_EQ(expected.size(), 2 * columns - 7);
            for (const KernelCode code : kernelCodes()) {
                EXPECT_EQ(kernelShifts(motifs, 0, 1, 2, cutoff, OuterMotif::left, code), expected) << columns;
            }
        }
    }
}

TEST(PairKernel, ReadsNothingBehindItsColumns) {
    // Every length of the last step of the sums and of the filter, at the very end of the prepared data, in all four
    // orientations. Only an address checker can see that something is read too far, so this test is also built with
    // one.
    for (std::size_t columns = 4; columns < 24; ++columns) {
        std::vector<data> motifs(2);
        for (data& motif : motifs) motif.matrix = motif.revCompMatrix = Matrix(columns, Column{0.25, 0.25, 0.25, 0.25});
        for (const KernelCode code : kernelCodes()) {
            EXPECT_EQ(kernelShifts(motifs, 0, 0, 2, 0.9, OuterMotif::left, code).size(), 2 * (2 * columns - 7));
        }
    }
}

TEST(PairKernel, MayBeCalledFromSeveralThreads) {
    NastySource source(13);
    const std::vector<data> motifs = source.pool(60, 24);
    const KernelMotifs prepared(motifs);
    const CutoffTable table(0.7);
    std::vector<Shifts> alone(motifs.size());
    std::vector<Shifts> shared(motifs.size());
    const auto score = [&](std::vector<Shifts>& rows, std::size_t left, KernelScratch& scratch) {
        scoreShifts(prepared, left, prepared, 0, motifs.size(), table, OuterMotif::left, rows[left], scratch);
    };
    KernelScratch scratch;
    for (std::size_t left = 0; left < motifs.size(); ++left) {
        score(alone, left, scratch);
    }
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < 3; ++thread) {
        threads.emplace_back([&, thread] {
            KernelScratch ofThread;
            for (std::size_t left = thread; left < motifs.size(); left += 3) {
                score(shared, left, ofThread);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(shared, alone);
}

}  // namespace
}  // namespace varnolix
