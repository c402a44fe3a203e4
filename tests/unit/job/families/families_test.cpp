#include "job/families/families.h"

#include <gtest/gtest.h>
#include <omp.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "job/downloads/information.h"
#include "job/families/pair_alignment.h"
#include "job/job_error.h"
#include "support/random_motifs.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

using varnolix::testing::motifOfMatrix;
using varnolix::testing::motifOfText;
using varnolix::testing::RandomMotifs;
using varnolix::testing::RunTest;

/// Motifs of some families: parts of a source on either strand, with a little noise.
std::vector<data> relatedMotifs(std::size_t families, std::size_t members, std::uint64_t seed) {
    RandomMotifs random(seed);
    std::vector<data> motifs;
    for (std::size_t family = 0; family < families; ++family) {
        const Matrix source = random.matrix(12 + random.pick(6));
        for (std::size_t n = 0; n < members; ++n) {
            Matrix part(source.begin() + static_cast<std::ptrdiff_t>(random.pick(3)),
                        source.end() - static_cast<std::ptrdiff_t>(random.pick(3)));
            for (Column& column : part) {
                for (double& value : column) value += 0.02 * static_cast<double>(random.pick(5));
                column = frequencies(column);
            }
            if (random.pick(2) == 1) part = oppositeStrand(part);
            motifs.push_back(motifOfMatrix(static_cast<int>(motifs.size()) + 1, part));
        }
    }
    return motifs;
}

/// For each motif the place of its family.
std::vector<std::size_t> familyPlaces(const Families& families, std::size_t motifs) {
    std::vector<std::size_t> places(motifs, motifs);
    for (std::size_t n = 0; n < families.families.size(); ++n) {
        for (const FamilyMember& member : families.families[n].members) {
            EXPECT_EQ(places[member.motif], motifs) << "in two families";
            places[member.motif] = n;
        }
    }
    EXPECT_EQ(std::ranges::count(places, motifs), 0) << "in no family";
    return places;
}

/// The mean of the members at their places, from the first to the last column of the common motif.
void expectMeanOfMembers(const Family& family, const std::vector<data>& motifs) {
    for (std::size_t k = 0; k < family.commonMotif.size(); ++k) {
        Column sum{};
        double covering = 0.0;
        double most = 0.0;
        for (const FamilyMember& member : family.members) {
            const Matrix usable = usableMatrix(motifs[member.motif].matrix);
            const Matrix strand = member.isReversed ? oppositeStrand(usable) : usable;
            const auto place = static_cast<std::ptrdiff_t>(k) - member.offset;
            if (place < 0 || place >= static_cast<std::ptrdiff_t>(strand.size())) continue;
            const Column& column = strand[static_cast<std::size_t>(place)];
            for (std::size_t base = 0; base < sum.size(); ++base) sum[base] += column[base];
            covering += 1.0;
            most = std::max(most, informationOf(column));
        }
        ASSERT_GT(covering, 0.0);
        for (std::size_t base = 0; base < sum.size(); ++base) {
            EXPECT_NEAR(family.commonMotif[k][base], sum[base] / covering, 1e-12);
        }
        EXPECT_LE(informationOf(family.commonMotif[k]), most + 1e-12) << "stronger than all of its members";
    }
}

void expectEqual(const Families& one, const Families& other) {
    ASSERT_EQ(one.families.size(), other.families.size());
    for (std::size_t n = 0; n < one.families.size(); ++n) {
        const Family& family = one.families[n];
        EXPECT_EQ(family.commonMotif, other.families[n].commonMotif);
        EXPECT_EQ(family.cutHeight, other.families[n].cutHeight);
        ASSERT_EQ(family.members.size(), other.families[n].members.size());
        for (std::size_t k = 0; k < family.members.size(); ++k) {
            EXPECT_EQ(family.members[k].motif, other.families[n].members[k].motif);
            EXPECT_EQ(family.members[k].offset, other.families[n].members[k].offset);
            EXPECT_EQ(family.members[k].isReversed, other.families[n].members[k].isReversed);
            EXPECT_EQ(family.members[k].distance, other.families[n].members[k].distance);
        }
    }
}

using FamiliesTest = RunTest;

TEST_F(FamiliesTest, FindsWhatWasPlanted) {
    const std::vector<data> motifs = relatedMotifs(6, 5, 1);
    const Families families = familiesOf(motifs, FamilySettings{});
    const std::vector<std::size_t> places = familyPlaces(families, motifs.size());
    ASSERT_EQ(families.families.size(), 6U);
    for (std::size_t n = 0; n < motifs.size(); ++n) EXPECT_EQ(places[n], n / 5) << "families by their first motif";
    for (const Family& family : families.families) {
        expectMeanOfMembers(family, motifs);
        EXPECT_GT(family.cutHeight, 0.0);
        EXPECT_LE(family.cutHeight, 0.5);
        const auto first = std::ranges::min_element(family.members, {}, &FamilyMember::motif);
        EXPECT_FALSE(first->isReversed);
    }
    EXPECT_EQ(families.linkage, "average");
    EXPECT_TRUE(families.notes.empty());
}

TEST_F(FamiliesTest, MembersLieAsTheyWereCut) {
    // The same source, once shifted by two columns and once on the other strand; no noise, so they are found exactly.
    const Matrix source = RandomMotifs(9).matrix(14);
    std::vector<data> motifs = relatedMotifs(5, 2, 4);
    const std::size_t first = motifs.size();
    motifs.push_back(motifOfMatrix(11, source));
    motifs.push_back(motifOfMatrix(12, Matrix(source.begin() + 2, source.end())));
    motifs.push_back(motifOfMatrix(13, oppositeStrand(Matrix(source.begin(), source.end() - 3))));
    FamilySettings settings;
    settings.flanks = 0.5;
    const Families families = familiesOf(motifs, settings);
    const Family& family = families.families[familyPlaces(families, motifs.size())[first]];
    ASSERT_EQ(family.members.size(), 3U);
    std::map<std::size_t, FamilyMember> members;
    for (const FamilyMember& member : family.members) members[member.motif] = member;
    EXPECT_EQ(members[first].offset, 0);
    EXPECT_EQ(members[first + 1].offset, 2);
    EXPECT_EQ(members[first + 2].offset, 0);
    EXPECT_TRUE(members[first + 2].isReversed);
    EXPECT_EQ(family.commonMotif, source);
    EXPECT_EQ(members[first].distance, 0.0);
    EXPECT_GT(members[first + 1].distance, 0.0);
    // Two of three cover the first columns, and all but the last three: with more wanted, flanks are cut.
    settings.flanks = 0.9;
    const Families narrow = familiesOf(motifs, settings);
    const Family& cut = narrow.families[familyPlaces(narrow, motifs.size())[first]];
    EXPECT_EQ(cut.commonMotif, Matrix(source.begin() + 2, source.end() - 3));
    for (const FamilyMember& member : cut.members) EXPECT_EQ(member.offset, member.motif == first + 1 ? 0 : -2);
}

TEST_F(FamiliesTest, EveryNumberOfThreadsGivesTheSame) {
    const std::vector<data> motifs = relatedMotifs(10, 6, 2);
    omp_set_num_threads(1);
    const Families one = familiesOf(motifs, FamilySettings{});
    for (const int threads : {2, 5}) {
        omp_set_num_threads(threads);
        expectEqual(one, familiesOf(motifs, FamilySettings{}));
    }
}

TEST_F(FamiliesTest, EqualMotifsAreOneInAllButTheirNumber) {
    std::vector<data> motifs = relatedMotifs(4, 3, 3);
    const std::size_t count = motifs.size();
    for (int copy = 0; copy < 7; ++copy) motifs.push_back(motifs[1]);
    motifs.push_back(motifOfMatrix(1, oppositeStrand(motifs[1].matrix)));
    const Families families = familiesOf(motifs, FamilySettings{});
    const std::vector<std::size_t> places = familyPlaces(families, motifs.size());
    for (std::size_t n = count; n < motifs.size(); ++n) EXPECT_EQ(places[n], places[1]);
    EXPECT_EQ(places[1], 0U) << "the largest family";
    for (const Family& family : families.families) expectMeanOfMembers(family, motifs);
    const std::set<std::size_t> leaves(families.leafOrder.begin(), families.leafOrder.end());
    EXPECT_EQ(leaves.size(), motifs.size());
    EXPECT_EQ(families.merges.size(), motifs.size() - 1);
    for (std::size_t n = 0; n < 8; ++n) EXPECT_EQ(families.merges[n].height, 0.0);

    // The table of all motifs, equal ones at distance 0, leads to the same families at the same heights.
    const ColumnPool pool(motifs);
    std::vector<double> distances(pairsOf(motifs.size()));
    for (std::size_t one = 1; one < motifs.size(); ++one) {
        for (std::size_t other = 0; other < one; ++other) {
            distances[pairCell(one, other)] =
                alignmentOf({motifs[one].matrix, pool, &one}, {motifs[other].matrix, pool, &other}).distance;
        }
    }
    const std::vector<TreeMerge> ungrouped =
        treeOf(distances, std::vector<std::size_t>(motifs.size(), 1), Linkage::average);
    for (std::size_t n = 0; n < ungrouped.size(); ++n) {
        // The columns of the other strand are convolved in another order, which p-values show in the tenth digit.
        EXPECT_NEAR(ungrouped[n].height, families.merges[n].height, 1e-8) << n;
    }
}

TEST_F(FamiliesTest, TakesThePValuesOfAnyCaller) {
    // Those of all motifs, with equal ones among them, lead to the same as those of the different ones.
    std::vector<data> motifs = relatedMotifs(4, 3, 3);
    motifs.push_back(motifs[5]);
    const Families expected = familiesOf(motifs, FamilySettings{});
    FamilyDistances distances(motifs);
    const ColumnPool pool(motifs);
    std::vector<QueryRequest> requests(motifs.size());
    for (std::size_t n = 0; n < motifs.size(); ++n) requests[n] = {&motifs[n].matrix, n, {}};
    significanceOf(requests, pool, 3, fastestKernelCode(),
                   [&](std::size_t query, const QueryMatches& found) { distances.take(query, found); });
    expectEqual(expected, familiesOf(motifs, distances, FamilySettings{}));
}

TEST_F(FamiliesTest, ManyEqualMotifsCostLittle) {
    const std::vector<data> motifs(20000, motifOfText(1, "GATTACA"));
    const Families families = familiesOf(motifs, FamilySettings{});
    ASSERT_EQ(families.families.size(), 1U);
    EXPECT_EQ(families.families[0].commonMotif, motifs[0].matrix);
    EXPECT_EQ(families.families[0].members.size(), motifs.size());
    for (const FamilyMember& member : families.families[0].members) ASSERT_EQ(member.distance, 0.0);
}

TEST_F(FamiliesTest, TakesFlatShortAndLongMotifs) {
    std::vector<data> motifs = relatedMotifs(3, 3, 6);
    motifs.push_back(motifOfMatrix(10, Matrix(8, Column{0.25, 0.25, 0.25, 0.25})));
    motifs.push_back(motifOfMatrix(11, Matrix(9, Column{0.25, 0.25, 0.25, 0.25})));
    motifs.push_back(motifOfText(12, "GAT"));
    motifs.push_back(motifOfText(13, "GAT"));
    motifs.push_back(motifOfText(14, "ATC"));
    motifs.push_back(motifOfText(15, "G"));
    RandomMotifs random(8);
    const Matrix longMotif = random.matrix(150);
    motifs.push_back(motifOfMatrix(16, longMotif));
    motifs.push_back(motifOfMatrix(17, Matrix(longMotif.begin() + 5, longMotif.end())));
    motifs.push_back(motifOfMatrix(18, random.matrix(140)));
    for (const double cut : {0.0, 0.5, 1.0}) {
        FamilySettings settings;
        settings.cut = cut;
        const Families families = familiesOf(motifs, settings);
        const std::vector<std::size_t> places = familyPlaces(families, motifs.size());
        for (const Family& family : families.families) expectMeanOfMembers(family, motifs);
        EXPECT_EQ(places[11], places[12]);
        EXPECT_EQ(places[11], places[13]) << "equal on the other strand";
        EXPECT_EQ(places[11] == places[14], cut == 1.0);
        EXPECT_EQ(places[15] == places[16], cut > 0.0) << "long ones, shifted";
        EXPECT_EQ(places[15] == places[17], cut == 1.0);
        EXPECT_EQ(families.notes.size(), 2U);
        EXPECT_EQ(families.families.size() == 1, cut == 1.0);
    }
}

TEST_F(FamiliesTest, OneMotifIsAFamily) {
    const std::vector<data> motifs = {motifOfText(1, "GATTACA")};
    const Families families = familiesOf(motifs, FamilySettings{});
    ASSERT_EQ(families.families.size(), 1U);
    EXPECT_EQ(families.families[0].commonMotif, motifs[0].matrix);
    EXPECT_EQ(families.families[0].cutHeight, 0.0);
    EXPECT_TRUE(families.merges.empty());
}

TEST_F(FamiliesTest, TwoMotifsMayHaveNoBackground) {
    const std::vector<data> motifs = {motifOfText(1, "GATTACA"), motifOfText(2, "GA")};
    EXPECT_EQ(familiesOf(motifs, FamilySettings{}).families.size(), 2U);
}

TEST_F(FamiliesTest, RefusesWhatDoesNotFitTheMemory) {
    requireMemoryForFamilies(1000);
    EXPECT_THROW(requireMemoryForFamilies(100'000'000), JobError);
}

TEST_F(FamiliesTest, CountsDifferentMotifsByTheirFrequencies) {
    JobSources sources;
    const auto add = [&](std::vector<NumberColumn> columns) {
        sources.motifs.emplace_back().motif.columns = std::move(columns);
    };
    add({{"1", "0", "0", "0"}, {"0", "3", "1", "0"}});
    add({{"20", "0", "0", "0"}, {"0", "6", "2", "0"}});
    add({{"0", "1", "3", "0"}, {"0", "0", "0", "2"}});  // the other strand
    add({{"1", "0", "0", "0"}, {"0", "3", "0", "1"}});
    EXPECT_EQ(differentMotifs(sources), 2U);
}

}  // namespace
}  // namespace varnolix::job
