#include "job/families/linkage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <set>
#include <tuple>

#include "run/shared_records.h"

namespace varnolix::job {
namespace {

using Members = std::vector<std::size_t>;

std::vector<double> randomDistances(std::size_t motifs, std::uint64_t seed, int steps = 1000000) {
    std::mt19937_64 random{seed};
    std::vector<double> distances(pairsOf(motifs));
    std::ranges::generate(distances,
                          [&] { return static_cast<double>(random() % static_cast<unsigned>(steps)) / steps; });
    return distances;
}

double groupDistance(const std::vector<double>& distances, const Members& one, const Members& other, Linkage linkage) {
    std::vector<double> all;
    for (const std::size_t a : one) {
        for (const std::size_t b : other) all.push_back(distances[pairCell(a, b)]);
    }
    if (linkage == Linkage::single) return *std::ranges::min_element(all);
    if (linkage == Linkage::complete) return *std::ranges::max_element(all);
    return std::accumulate(all.begin(), all.end(), 0.0) / static_cast<double>(all.size());
}

/// The groups that the steps make, with their heights.
std::vector<std::pair<std::set<std::size_t>, double>> groupsOf(const std::vector<TreeMerge>& merges) {
    std::vector<std::pair<std::set<std::size_t>, double>> groups;
    for (const TreeMerge& merge : merges) {
        std::set<std::size_t> members;
        for (const int side : {merge.left, merge.right}) {
            if (side < 0) {
                members.insert(static_cast<std::size_t>(-side - 1));
            } else {
                const auto& below = groups[static_cast<std::size_t>(side - 1)].first;
                members.insert(below.begin(), below.end());
            }
        }
        groups.emplace_back(members, merge.height);
    }
    return groups;
}

/// Joins the two nearest groups again and again, by the definition of the linkage.
std::vector<std::pair<std::set<std::size_t>, double>> plainGroups(const std::vector<double>& distances,
                                                                  std::size_t motifs, Linkage linkage) {
    std::vector<Members> left;
    for (std::size_t n = 0; n < motifs; ++n) left.push_back({n});
    std::vector<std::pair<std::set<std::size_t>, double>> groups;
    while (left.size() > 1) {
        std::tuple<double, std::size_t, std::size_t> best{2.0, 0, 0};
        for (std::size_t b = 1; b < left.size(); ++b) {
            for (std::size_t a = 0; a < b; ++a) {
                best = std::min(best, {groupDistance(distances, left[a], left[b], linkage), a, b});
            }
        }
        const auto [height, a, b] = best;
        left[a].insert(left[a].end(), left[b].begin(), left[b].end());
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(b));
        groups.emplace_back(std::set<std::size_t>(left[a].begin(), left[a].end()), height);
    }
    return groups;
}

std::vector<TreeMerge> tree(std::vector<double> distances, std::size_t motifs, Linkage linkage) {
    return treeOf(distances, std::vector<std::size_t>(motifs, 1), linkage);
}

TEST(LinkageTest, JoinsTheNearestByHand) {
    // 0 and 1 at 0.1; 2 and 3 at 0.3; the groups at the mean, the greatest or the least of 0.5, 0.7, 0.6 and 0.8.
    const std::vector<double> distances = {0.1, 0.5, 0.6, 0.7, 0.8, 0.3};
    for (const auto& [linkage, height] :
         {std::pair{Linkage::average, 0.65}, {Linkage::complete, 0.8}, {Linkage::single, 0.5}}) {
        const std::vector<TreeMerge> merges = tree(distances, 4, linkage);
        ASSERT_EQ(merges.size(), 3U);
        EXPECT_EQ(std::tuple(merges[0].left, merges[0].right, merges[0].height), std::tuple(-1, -2, 0.1));
        EXPECT_EQ(std::tuple(merges[1].left, merges[1].right, merges[1].height), std::tuple(-3, -4, 0.3));
        EXPECT_EQ(std::tuple(merges[2].left, merges[2].right), std::tuple(1, 2));
        EXPECT_NEAR(merges[2].height, height, 1e-15);
    }
}

TEST(LinkageTest, FindsTheGroupsOfTheDefinition) {
    for (const Linkage linkage : {Linkage::average, Linkage::complete, Linkage::single}) {
        for (std::uint64_t seed = 1; seed <= 20; ++seed) {
            const std::size_t motifs = 2 + seed * 2;
            const std::vector<double> distances = randomDistances(motifs, seed);
            const auto found = groupsOf(tree(distances, motifs, linkage));
            const auto expected = plainGroups(distances, motifs, linkage);
            ASSERT_EQ(found.size(), expected.size());
            for (std::size_t n = 0; n < found.size(); ++n) {
                EXPECT_EQ(found[n].first, expected[n].first) << linkageName(linkage) << " " << seed;
                EXPECT_NEAR(found[n].second, expected[n].second, 1e-12);
            }
        }
    }
}

TEST(LinkageTest, NoStepIsLowerThanThoseBelowIt) {
    // Few different distances, so that many are equal.
    for (const Linkage linkage : {Linkage::average, Linkage::complete, Linkage::single}) {
        const std::vector<TreeMerge> merges = tree(randomDistances(120, 7, 4), 120, linkage);
        ASSERT_EQ(merges.size(), 119U);
        for (std::size_t n = 0; n < merges.size(); ++n) {
            for (const int side : {merges[n].left, merges[n].right}) {
                if (side < 0) continue;
                EXPECT_LE(static_cast<std::size_t>(side), n) << "a step refers to a later one";
                EXPECT_LE(merges[static_cast<std::size_t>(side - 1)].height, merges[n].height);
            }
            EXPECT_LE(merges[n > 0 ? n - 1 : 0].height, merges[n].height);
        }
        EXPECT_EQ(groupsOf(merges).back().first.size(), 120U);
    }
}

TEST(LinkageTest, EqualDistancesStayEqual) {
    const std::vector<TreeMerge> merges = tree(std::vector<double>(pairsOf(50), 0.3), 50, Linkage::average);
    for (const TreeMerge& merge : merges) EXPECT_EQ(merge.height, 0.3);
    EXPECT_EQ(std::tuple(merges[0].left, merges[0].right), std::tuple(-1, -2));
}

TEST(LinkageTest, SizesCountAsCopies) {
    // Place 1 stands for three motifs: the same groups at the same heights as with the copies at distance 0.
    const std::size_t places = 9;
    const std::vector<std::size_t> original = {0, 1, 1, 1, 2, 3, 4, 5, 6, 7, 8};
    std::vector<double> distances = randomDistances(places, 3);
    std::vector<double> copied(pairsOf(original.size()));
    for (std::size_t a = 1; a < original.size(); ++a) {
        for (std::size_t b = 0; b < a; ++b) {
            copied[pairCell(a, b)] = original[a] == original[b] ? 0.0 : distances[pairCell(original[a], original[b])];
        }
    }
    const std::vector<TreeMerge> withCopies = tree(copied, original.size(), Linkage::average);
    const std::vector<TreeMerge> merges =
        treeOf(distances, std::vector<std::size_t>{1, 3, 1, 1, 1, 1, 1, 1, 1}, Linkage::average);
    const auto expected = groupsOf(withCopies);
    const auto found = groupsOf(merges);
    for (std::size_t n = 0; n < found.size(); ++n) {
        std::set<std::size_t> places2;
        for (const std::size_t motif : expected[n + 2].first) places2.insert(original[motif]);
        EXPECT_EQ(found[n].first, places2);
        EXPECT_NEAR(found[n].second, expected[n + 2].second, 1e-12);
    }
}

TEST(LinkageTest, LeavesComeFromLeftToRight) {
    const std::vector<TreeMerge> merges = {{-2, -4, 0.1}, {-1, -3, 0.2}, {1, 2, 0.3}};
    EXPECT_EQ(leavesOf(merges, 4), (std::vector<std::size_t>{1, 3, 0, 2}));
    EXPECT_EQ(leavesOf({}, 1), (std::vector<std::size_t>{0}));
    EXPECT_TRUE(leavesOf({}, 0).empty());
}

TEST(LinkageTest, NamesAreReadBack) {
    for (const Linkage linkage : {Linkage::average, Linkage::complete, Linkage::single}) {
        EXPECT_EQ(linkageOf(linkageName(linkage)), linkage);
    }
}

}  // namespace
}  // namespace varnolix::job
