#include "rank/best_matches.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "rank/comparison.h"

namespace varnolix {
namespace {

using Records = std::vector<dataCombinedScore>;

/// A record described by its partner and its score.
struct Match {
    int partner;
    double score;

    bool operator==(const Match&) const = default;
};

Records recordsOf(const std::vector<Match>& matches) {
    Records records;
    for (const Match& match : matches) {
        dataCombinedScore record{};
        record.matrixID1 = 1;
        record.matrixID2 = match.partner;
        record.combinedScore = match.score;
        record.position = static_cast<std::uint32_t>(records.size()) & 0xFFFFU;
        records.push_back(record);
    }
    return records;
}

std::vector<Match> matchesOf(const Records& records) {
    std::vector<Match> matches;
    for (const dataCombinedScore& record : records) matches.push_back({record.matrixID2, record.combinedScore});
    return matches;
}

std::vector<SortKey> keysOf(const Records& records) {
    std::vector<SortKey> keys;
    for (const dataCombinedScore& record : records) {
        // All have the same partner, so their places in the list decide between equal scores.
        keys.emplace_back(record.combinedScore,
                          RecordPlace{Direction::forward, 0, Sliding::left, static_cast<std::uint32_t>(keys.size())});
    }
    return keys;
}

Records select(const Records& records, const BestMatchRule& rule) {
    std::vector<SortKey> keys = keysOf(records);
    std::vector<std::uint32_t> seen;
    const auto recordOf = [&](const SortKey& key) { return records[key.place().alignment]; };
    const auto partnerOf = [&](const SortKey& key) { return static_cast<std::uint32_t>(recordOf(key).matrixID2); };
    return selectBestMatches(std::span(keys), rule, seen, partnerOf, recordOf);
}

std::vector<Match> select(const std::vector<Match>& matches, const BestMatchRule& rule) {
    return matchesOf(select(recordsOf(matches), rule));
}

using Matches = std::vector<Match>;

const Matches fiveRecords = {{5, 0.75}, {2, 0.25}, {3, 0.5}, {2, 0.125}, {4, 1.0}};

TEST(BestMatches, EmptyListGivesEmptyList) {
    EXPECT_TRUE(select(Matches{}, inputRule(5, false)).empty());
    EXPECT_TRUE(select(Matches{}, collectionRule(5)).empty());
}

TEST(BestMatches, PartnerStandsOnceWithItsBestRecord) {
    EXPECT_EQ(select(fiveRecords, inputRule(50, false)), (Matches{{2, 0.125}, {3, 0.5}, {5, 0.75}, {4, 1.0}}));
}

TEST(BestMatches, CountLimitsTheList) {
    EXPECT_EQ(select(fiveRecords, inputRule(2, false)), (Matches{{2, 0.125}, {3, 0.5}}));
    EXPECT_EQ(select(fiveRecords, inputRule(4, false)).size(), 4U);
}

TEST(BestMatches, FirstMotifKeepsOneMore) {
    EXPECT_EQ(select(fiveRecords, inputRule(2, true)), (Matches{{2, 0.125}, {3, 0.5}, {5, 0.75}}));
    EXPECT_EQ(select(fiveRecords, inputRule(50, true)).size(), 4U);
}

TEST(BestMatches, OneMatchKeepsOneRecordAndTwoOfTheFirstMotif) {
    EXPECT_EQ(select(fiveRecords, inputRule(1, false)), (Matches{{2, 0.125}}));
    EXPECT_EQ(select(fiveRecords, inputRule(1, true)), (Matches{{2, 0.125}, {3, 0.5}}));
}

TEST(BestMatches, OneMatchOfTheFirstMotifLooksPastItsPartner) {
    // Records of a partner that is already kept are skipped until another partner appears.
    EXPECT_EQ(select(Matches{{2, 0.1}, {2, 0.2}, {2, 0.3}, {3, 0.4}, {4, 0.5}}, inputRule(1, true)),
              (Matches{{2, 0.1}, {3, 0.4}}));
    EXPECT_EQ(select(Matches{{2, 0.1}, {2, 0.2}}, inputRule(1, true)), (Matches{{2, 0.1}}));
}

TEST(BestMatches, AgainstACollectionOneMatchKeepsTwo) {
    EXPECT_EQ(select(Matches{{2, 0.1}, {3, 0.2}, {4, 0.3}}, collectionRule(1)), (Matches{{2, 0.1}, {3, 0.2}}));
}

TEST(BestMatches, AgainstACollectionTheTestFollowsSkippedRecordsToo) {
    // The second record is skipped, and with a count of 1 the walk ends before the third.
    EXPECT_EQ(select(Matches{{2, 0.1}, {2, 0.2}, {3, 0.3}}, collectionRule(1)), (Matches{{2, 0.1}}));
    EXPECT_EQ(select(Matches{{2, 0.1}}, collectionRule(1)), (Matches{{2, 0.1}}));
}

TEST(BestMatches, AgainstACollectionLargerCountsAreKept) {
    EXPECT_EQ(select(fiveRecords, collectionRule(2)), (Matches{{2, 0.125}, {3, 0.5}}));
    EXPECT_EQ(select(fiveRecords, collectionRule(3)), (Matches{{2, 0.125}, {3, 0.5}, {5, 0.75}}));
    EXPECT_EQ(select(fiveRecords, collectionRule(50)).size(), 4U);
}

/// Sorts the whole list, then reduces it record by record.
Records plainSelection(Records records, int most, int countAtFirst, bool testsAfterFirst) {
    std::stable_sort(records.begin(), records.end(), comparison);
    Records kept;
    std::vector<int> seen;
    int count = 0;
    for (const dataCombinedScore& record : records) {
        if (kept.empty()) {
            count = countAtFirst;
        } else if (std::find(seen.begin(), seen.end(), record.matrixID2) != seen.end()) {
            if (count >= most) break;
            continue;
        } else {
            ++count;
        }
        kept.push_back(record);
        seen.push_back(record.matrixID2);
        const bool isFirst = kept.size() == 1;
        if (count >= most && (!isFirst || testsAfterFirst)) break;
    }
    return kept;
}

TEST(BestMatches, RandomListsAgreeWithSortingThemWhole) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        std::mt19937_64 engine(seed);
        Matches matches(engine() % 400);
        const int partners = 1 + static_cast<int>(engine() % 60);
        for (Match& match : matches) {
            match.partner = 1 + static_cast<int>(engine() % static_cast<unsigned>(partners));
            match.score = static_cast<double>(engine() % 40) * 0.25;  // many equal scores
        }
        const Records records = recordsOf(matches);
        for (const int most : {1, 2, 10, 50}) {
            struct Case {
                BestMatchRule rule;
                Records expected;
            };
            for (const Case& each : {Case{inputRule(most, true), plainSelection(records, most, 0, true)},
                                     {inputRule(most, false), plainSelection(records, most, 1, true)},
                                     {collectionRule(most), plainSelection(records, most, 1, false)}}) {
                const Records kept = select(records, each.rule);
                ASSERT_EQ(kept.size(), each.expected.size()) << "seed " << seed << ", most " << most;
                for (std::size_t place = 0; place < kept.size(); ++place) {
                    ASSERT_EQ(kept[place].position, each.expected[place].position) << "seed " << seed;
                }
            }
        }
    }
}

RecordLists listsOfScores(const std::vector<std::vector<double>>& scores) {
    RecordLists lists;
    for (const std::vector<double>& list : scores) {
        Matches matches;
        for (const double score : list) matches.push_back({static_cast<int>(matches.size()) + 2, score});
        lists.push_back(recordsOf(matches));
    }
    return lists;
}

std::vector<int> idsOf(const std::vector<commonBestMatches>& ranking) {
    std::vector<int> ids;
    for (const commonBestMatches& motif : ranking) ids.push_back(motif.matrixID);
    return ids;
}

TEST(RankBySum, LowestSumComesFirst) {
    const std::vector<commonBestMatches> ranking = rankBySum(listsOfScores({{1, 2}, {0.5}, {0.25, 0.125}, {9}}));
    EXPECT_EQ(idsOf(ranking), (std::vector<int>{3, 2, 1, 4}));
    EXPECT_EQ(ranking[0].sumCombinedScore, 0.375);
    EXPECT_EQ(ranking[2].sumCombinedScore, 3.0);
}

TEST(RankBySum, EmptyListsCountZero) {
    const std::vector<commonBestMatches> ranking = rankBySum(listsOfScores({{1}, {}, {0.5}, {}}));
    EXPECT_EQ(idsOf(ranking), (std::vector<int>{2, 4, 3, 1}));
    EXPECT_EQ(ranking[0].sumCombinedScore, 0.0);
}

TEST(RankBySum, NoListsGiveNoRanking) {
    EXPECT_TRUE(rankBySum({}).empty());
}

TEST(RankBySum, EqualSumsKeepTheOrderOfTheMotifs) {
    const std::size_t motifs = 300;
    std::vector<std::vector<double>> scores;
    std::vector<int> expected;
    for (const int sum : {0, 1, 2}) {
        for (std::size_t motif = 0; motif < motifs; ++motif) {
            if (motif % 3 == static_cast<std::size_t>(sum)) expected.push_back(static_cast<int>(motif) + 1);
        }
    }
    for (std::size_t motif = 0; motif < motifs; ++motif) scores.push_back({static_cast<double>(motif % 3)});
    EXPECT_EQ(idsOf(rankBySum(listsOfScores(scores))), expected);
}

TEST(TopMotifs, EmptyListsTakeNoPlace) {
    const RecordLists lists = listsOfScores({{1}, {}, {0.5}, {}, {0.25}});
    const std::vector<commonBestMatches> ranking = rankBySum(lists);
    EXPECT_EQ(topMotifs(ranking, lists, 1), (std::vector<int>{5}));
    EXPECT_EQ(topMotifs(ranking, lists, 2), (std::vector<int>{5, 3}));
    EXPECT_EQ(topMotifs(ranking, lists, 3), (std::vector<int>{5, 3, 1}));
}

TEST(TopMotifs, FewerMotifsThanAskedForAreAllTaken) {
    const RecordLists lists = listsOfScores({{1}, {}, {0.5}});
    EXPECT_EQ(topMotifs(rankBySum(lists), lists, 50), (std::vector<int>{3, 1}));
    EXPECT_TRUE(topMotifs(rankBySum(listsOfScores({{}, {}})), listsOfScores({{}, {}}), 50).empty());
}

}  // namespace
}  // namespace varnolix
