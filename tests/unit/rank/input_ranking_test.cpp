#include "rank/input_ranking.h"

#include <omp.h>

#include <limits>

#include "plain/listed_records.h"
#include "rank/record_source.h"
#include "support/random_motifs.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

dataCombinedScore record(int first, int second, double score) {
    dataCombinedScore made{};
    made.matrixID1 = first;
    made.matrixID2 = second;
    made.combinedScore = score;
    return made;
}

/// The ids of the partners in a list.
std::vector<int> partners(const std::vector<dataCombinedScore>& list) {
    std::vector<int> ids;
    for (const dataCombinedScore& each : list) ids.push_back(each.matrixID2);
    return ids;
}

using Ids = std::vector<int>;

class InputRankingTest : public testing::RunTest {
  protected:
    // Motifs 1 and 2 are in the first file, 3 and 4 in the second.
    InputRankingTest() {
        for (int id = 1; id <= 4; ++id) motifs.push_back(testing::motifOfText(id, "ACGT", id <= 2 ? 1 : 2));
        lists = {{record(1, 2, 0.5), record(1, 3, 0.25), record(1, 4, 0.75), record(1, 2, 0.125)},
                 {record(2, 1, 0.0), record(2, 4, 1.0)},
                 {record(3, 4, 0.25)},
                 {}};
    }

    std::vector<data> motifs;
    RecordLists lists;
};

TEST_F(InputRankingTest, LocalListsHoldAllRecords) {
    const InputRankings rankings = rankInput(testing::listedInputRecords(lists), motifs, {50, true, false, false});
    EXPECT_EQ(partners(rankings.local.bestMatches[0]), (Ids{2, 3, 4}));
    EXPECT_EQ(partners(rankings.local.bestMatches[1]), (Ids{1, 4}));
    EXPECT_EQ(partners(rankings.local.bestMatches[2]), (Ids{4}));
    EXPECT_TRUE(rankings.local.bestMatches[3].empty());
}

TEST_F(InputRankingTest, GlobalListsHoldRecordsAcrossFiles) {
    const InputRankings rankings = rankInput(testing::listedInputRecords(lists), motifs, {50, true, false, false});
    EXPECT_EQ(partners(rankings.global.bestMatches[0]), (Ids{3, 4}));
    EXPECT_EQ(partners(rankings.global.bestMatches[1]), (Ids{4}));
    EXPECT_TRUE(rankings.global.bestMatches[2].empty());
    EXPECT_TRUE(rankings.global.bestMatches[3].empty());
}

TEST_F(InputRankingTest, OneFileHasNoGlobalRanking) {
    const InputRankings rankings = rankInput(testing::listedInputRecords(lists), motifs, {50, false, false, false});
    EXPECT_TRUE(rankings.global.ranking.empty());
    for (const auto& list : rankings.global.bestMatches) EXPECT_TRUE(list.empty());
    EXPECT_EQ(rankings.local.ranking.size(), 4U);
}

TEST_F(InputRankingTest, RankingHoldsEveryMotifBySum) {
    const InputRankings rankings = rankInput(testing::listedInputRecords(lists), motifs, {50, true, false, false});
    Ids ids;
    for (const commonBestMatches& motif : rankings.local.ranking) ids.push_back(motif.matrixID);
    EXPECT_EQ(ids, (Ids{4, 3, 2, 1}));  // sums 0, 0.25, 1, 1.125
    EXPECT_EQ(rankings.local.ranking[3].sumCombinedScore, 1.125);
    ids.clear();
    for (const commonBestMatches& motif : rankings.global.ranking) ids.push_back(motif.matrixID);
    EXPECT_EQ(ids, (Ids{3, 4, 1, 2}));  // sums 0, 0, 1, 1
}

TEST_F(InputRankingTest, OneMatchKeepsTwoOfTheFirstMotifInBothWalks) {
    const InputRankings rankings = rankInput(testing::listedInputRecords(lists), motifs, {1, true, false, false});
    EXPECT_EQ(partners(rankings.local.bestMatches[0]), (Ids{2, 3}));
    EXPECT_EQ(partners(rankings.local.bestMatches[1]), (Ids{1}));
    EXPECT_EQ(partners(rankings.global.bestMatches[0]), (Ids{3, 4}));
    EXPECT_EQ(partners(rankings.global.bestMatches[1]), (Ids{4}));
}

TEST_F(InputRankingTest, FirstPlaceIsFirstEvenIfItsListIsEmpty) {
    lists[0].clear();
    const InputRankings rankings = rankInput(testing::listedInputRecords(lists), motifs, {1, true, false, false});
    EXPECT_TRUE(rankings.local.bestMatches[0].empty());
    EXPECT_EQ(rankings.local.bestMatches[1].size(), 1U);
}

TEST_F(InputRankingTest, DistancesAreTheLowestScoresOfEachPair) {
    const double none = std::numeric_limits<double>::infinity();
    const InputRankings rankings = rankInput(testing::listedInputRecords(lists), motifs, {1, true, true, true});
    // Pairs 2-1; 3-1, 3-2; 4-1, 4-2, 4-3.
    EXPECT_EQ(rankings.local.distances.lowestScores, (std::vector<double>{0.0, 0.25, none, 0.75, 1.0, 0.25}));
    EXPECT_EQ(rankings.global.distances.lowestScores, (std::vector<double>{none, 0.25, none, 0.75, 1.0, none}));
    EXPECT_EQ(rankings.largestCombinedScore, 1.0);
    EXPECT_EQ(rankings.local.distances.labels.size(), 4U);
}

TEST_F(InputRankingTest, DistancesAreLeftOutWithoutTree) {
    EXPECT_TRUE(rankInput(testing::listedInputRecords(lists), motifs, {1, true, false, false})
                    .local.distances.lowestScores.empty());
}

TEST_F(InputRankingTest, EachTreeHasItsTableOnlyWhereItIsAskedFor) {
    const InputRankings local = rankInput(testing::listedInputRecords(lists), motifs, {1, true, true, false});
    EXPECT_EQ(local.local.distances.lowestScores.size(), 6U);
    EXPECT_TRUE(local.global.distances.lowestScores.empty());
    const InputRankings global = rankInput(testing::listedInputRecords(lists), motifs, {1, true, false, true});
    EXPECT_TRUE(global.local.distances.lowestScores.empty());
    EXPECT_EQ(global.global.distances.lowestScores.size(), 6U);
    EXPECT_EQ(global.largestCombinedScore, 1.0);
}

TEST_F(InputRankingTest, NoRecordsGiveEmptyListsAndZeroSums) {
    const RecordLists none(4);
    const InputRankings rankings = rankInput(testing::listedInputRecords(none), motifs, {5, true, true, true});
    for (const commonBestMatches& motif : rankings.local.ranking) EXPECT_EQ(motif.sumCombinedScore, 0.0);
    EXPECT_EQ(rankings.largestCombinedScore, 0.0);
}

TEST_F(InputRankingTest, ThreadsChangeNothing) {
    testing::RandomMotifs random(12);
    motifs.clear();
    lists.clear();
    for (int id = 1; id <= 60; ++id) {
        motifs.push_back(testing::motifOfText(id, "ACGT", 1 + id % 3));
        auto& list = lists.emplace_back();
        const std::size_t count = random.pick(300);
        while (list.size() < count) {
            const int partner = 1 + (id + static_cast<int>(random.pick(59))) % 60;  // never the motif itself
            list.push_back(record(id, partner, static_cast<double>(random.pick(9)) * 0.5));
            list.back().position = static_cast<std::uint32_t>(list.size()) & 0xFFFFU;
        }
    }
    const auto printed = [&] {
        const InputRankings rankings = rankInput(testing::listedInputRecords(lists), motifs, {10, true, true, true});
        std::string text = std::to_string(rankings.largestCombinedScore);
        for (const InputRanking* ranking : {&rankings.local, &rankings.global}) {
            for (const auto& list : ranking->bestMatches) {
                for (const dataCombinedScore& each : list) text += " " + std::to_string(each.position);
                text += ";";
            }
            for (const commonBestMatches& motif : ranking->ranking) text += " " + std::to_string(motif.matrixID);
            for (const double score : ranking->distances.lowestScores) text += " " + std::to_string(score);
        }
        return text;
    };
    omp_set_num_threads(1);
    const std::string expected = printed();
    for (const int threads : {2, 3, 7}) {
        omp_set_num_threads(threads);
        EXPECT_TRUE(printed() == expected) << threads;
    }
}

}  // namespace
}  // namespace varnolix
