#include "job/families/pair_alignment.h"

#include <gtest/gtest.h>

#include <cmath>

#include "job/families/family_distances.h"
#include "support/random_motifs.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

using varnolix::testing::motifOfMatrix;
using varnolix::testing::motifOfText;
using varnolix::testing::RandomMotifs;

TEST(PairAlignmentTest, TakesTheChanceOfTheManualsExample) {
    const std::vector<data> targets = {motifOfText(1, "AACG"), motifOfText(2, "AATA")};
    const ColumnPool pool(targets);
    const WindowChances query(targets[0].matrix, pool, nullptr);
    EXPECT_NEAR(query.chance(0, 4, 0.0), 9.0 / 4096, 1e-6);
    EXPECT_NEAR(query.chance(0, 4, 4.0), 0.256592, 1e-4);
}

TEST(PairAlignmentTest, TheDistanceIsTheMeanOfTenthRoots) {
    EXPECT_DOUBLE_EQ(distancePart(1.0), 0.5);
    EXPECT_NEAR(distancePart(1.0 / 1024) + distancePart(1e-10), 0.25 + 0.05, 1e-12);
}

TEST(PairAlignmentTest, FindsShiftAndStrand) {
    RandomMotifs random(5);
    std::vector<data> motifs = random.motifs(30, 1);
    const Matrix whole = random.matrix(14);
    const Matrix part(whole.begin() + 3, whole.begin() + 12);
    motifs.push_back(motifOfMatrix(31, whole));
    motifs.push_back(motifOfMatrix(32, part));
    const ColumnPool pool(motifs);
    const WindowChances one(whole, pool, nullptr);
    const MotifAlignment alike = alignmentOf(one, {part, pool, nullptr});
    EXPECT_EQ(alike.shift, -3);
    EXPECT_FALSE(alike.isOpposite);
    const MotifAlignment opposed = alignmentOf(one, {oppositeStrand(part), pool, nullptr});
    EXPECT_EQ(opposed.shift, -3);
    EXPECT_TRUE(opposed.isOpposite);
    EXPECT_DOUBLE_EQ(opposed.distance, alike.distance);
    const MotifAlignment turned = alignmentOf({part, pool, nullptr}, one);
    EXPECT_EQ(turned.shift, 3);
    EXPECT_DOUBLE_EQ(turned.distance, alike.distance);
}

TEST(PairAlignmentTest, EqualMotifsHaveNoDistance) {
    const std::vector<data> motifs = {motifOfText(1, "AACGT"), motifOfText(2, "GATTACA"), motifOfText(3, "GA")};
    const ColumnPool pool(motifs);
    for (const data& motif : motifs) {
        const WindowChances chances(motif.matrix, pool, nullptr);
        EXPECT_EQ(alignmentOf(chances, chances).distance, 0.0);
        EXPECT_EQ(alignmentOf(chances, {oppositeStrand(motif.matrix), pool, nullptr}).distance, 0.0);
    }
}

TEST(PairAlignmentTest, ShortMotifsAreFarFromAllOthersButCanBePlaced) {
    const std::vector<data> motifs = {motifOfText(1, "GATTACA"), motifOfText(2, "TTA"), motifOfText(3, "C")};
    const ColumnPool pool(motifs);
    const WindowChances longer(motifs[0].matrix, pool, nullptr);
    const MotifAlignment placed = alignmentOf(longer, {motifs[1].matrix, pool, nullptr});
    EXPECT_EQ(placed.distance, 1.0);
    EXPECT_EQ(placed.shift, -2);
    EXPECT_FALSE(placed.isOpposite);
    EXPECT_EQ(alignmentOf(longer, {motifs[2].matrix, pool, nullptr}).distance, 1.0);
}

TEST(PairAlignmentTest, AgreesWithTheTableOfAllPairs) {
    RandomMotifs random(11);
    std::vector<data> motifs = random.motifs(25, 1);
    motifs.push_back(motifOfMatrix(26, random.matrix(120)));
    motifs.push_back(motifOfMatrix(27, random.matrix(101)));
    const ColumnPool pool(motifs);
    FamilyDistances table(motifs);
    ASSERT_EQ(table.different().size(), motifs.size()) << "the random motifs are all different";
    table.takeAll();
    const std::vector<double> distances = table.finished();
    for (std::size_t one = 1; one < motifs.size(); ++one) {
        for (std::size_t other = 0; other < one; ++other) {
            const WindowChances query(motifs[one].matrix, pool, &one);
            const WindowChances target(motifs[other].matrix, pool, &other);
            const double expected = alignmentOf(query, target).distance;
            EXPECT_NEAR(distances[pairCell(one, other)], expected, 1e-12) << one << " " << other;
        }
    }
}

TEST(PairAlignmentTest, TheNormalDistributionIsNearTheTables) {
    // The same 60 columns as part of a motif with tables and of one that is too long for them.
    RandomMotifs random(3);
    const Matrix longMotif = random.matrix(130);
    const Matrix shorter(longMotif.begin(), longMotif.begin() + 100);
    std::vector<data> motifs = random.motifs(200, 1);
    const ColumnPool pool(motifs);
    const WindowChances normal(longMotif, pool, nullptr);
    const WindowChances tables(shorter, pool, nullptr);
    int compared = 0;
    for (double distance = 1.0; distance < 120.0; distance += 1.0) {
        const double exact = tables.chance(20, 60, distance);
        if (exact < 0.01 || exact > 0.9) continue;
        // The tables round distances down to steps of 1/16, by half a step in the mean.
        EXPECT_NEAR(normal.chance(20, 60, distance + 60.0 / 32) / exact, 1.0, 0.25) << distance << " " << exact;
        ++compared;
    }
    EXPECT_GT(compared, 5);
}

}  // namespace
}  // namespace varnolix::job
