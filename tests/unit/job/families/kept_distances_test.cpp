#include <gtest/gtest.h>

#include <algorithm>

#include "job/families/families.h"
#include "support/random_motifs.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

using KeptDistancesTest = varnolix::testing::RunTest;

/// Six motifs, then the third once more, and the fifth on its other strand.
std::vector<data> motifsWithEqualOnes() {
    varnolix::testing::RandomMotifs random(3);
    std::vector<data> motifs = random.motifs(6, 1);
    motifs.push_back(motifs[2]);
    motifs.push_back(motifs[4]);
    std::ranges::reverse(motifs.back().matrix);
    for (Column& column : motifs.back().matrix) std::ranges::reverse(column);
    return motifs;
}

FamilySettings keeping(std::size_t motifs) {
    FamilySettings settings;
    settings.keptDistances = motifs;
    return settings;
}

TEST_F(KeptDistancesTest, EqualMotifsShareTheirs) {
    const std::vector<data> motifs = motifsWithEqualOnes();
    const std::vector<double> distances = familiesOf(motifs, keeping(motifs.size())).distances;
    ASSERT_EQ(distances.size(), pairsOf(motifs.size()));
    EXPECT_EQ(distances[pairCell(2, 6)], 0.0);
    EXPECT_EQ(distances[pairCell(4, 7)], 0.0);
    for (const std::size_t other : {0U, 1U, 3U, 5U}) {
        EXPECT_GT(distances[pairCell(2, other)], 0.0);
        EXPECT_EQ(distances[pairCell(2, other)], distances[pairCell(6, other)]);
        EXPECT_EQ(distances[pairCell(4, other)], distances[pairCell(7, other)]);
    }
    EXPECT_EQ(distances[pairCell(2, 4)], distances[pairCell(6, 7)]);
}

TEST_F(KeptDistancesTest, TheNearestAreJoinedFirst) {
    const std::vector<data> motifs = motifsWithEqualOnes();
    const Families families = familiesOf(motifs, keeping(motifs.size()));
    std::vector<double> distances = families.distances;
    std::erase(distances, 0.0);
    EXPECT_EQ(families.merges[0].height, 0.0);
    EXPECT_EQ(families.merges[1].height, 0.0);
    EXPECT_EQ(families.merges[2].height, *std::ranges::min_element(distances));
}

TEST_F(KeptDistancesTest, AreNotKeptOfMoreMotifs) {
    const std::vector<data> motifs = motifsWithEqualOnes();
    EXPECT_TRUE(familiesOf(motifs, keeping(motifs.size() - 1)).distances.empty());
    EXPECT_TRUE(familiesOf(motifs, {}).distances.empty());
}

}  // namespace
}  // namespace varnolix::job
