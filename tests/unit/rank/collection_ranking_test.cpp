#include "rank/collection_ranking.h"

#include "plain/listed_records.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

class CollectionRankingTest : public testing::RunTest {
  protected:
    CollectionRankingTest() {
        for (const char* name : {"alpha", "beta", "alpha"}) {
            references.push_back(testing::motifOfText(static_cast<int>(references.size()) + 1, "ACGT", 1, name));
        }
    }

    /// A record of input motif 1 and a reference motif. In a primary record, the input motif is stored first.
    static dataCombinedScore record(int reference, PrimaryFlag flag, double combinedScore) {
        dataCombinedScore made{};
        const bool isFirst = flag == PrimaryFlag::yes;
        made.matrixID1 = isFirst ? 1 : reference;
        made.matrixID2 = isFirst ? reference : 1;
        made.primaryFlag = flag;
        made.combinedScore = combinedScore;
        return made;
    }

    std::vector<double> keptScores(const std::vector<dataCombinedScore>& list, int mostMatches) const {
        const RecordLists lists{list};
        std::vector<double> scores;
        const RecordLists best =
            matchesInCollection(testing::listedCollectionRecords(lists), 1, references, mostMatches);
        for (const dataCombinedScore& kept : best[0]) scores.push_back(kept.combinedScore);
        return scores;
    }

    std::vector<data> references;
};

TEST_F(CollectionRankingTest, ReferencesOfOneNameCountAsOne) {
    const std::vector<double> kept = keptScores(
        {record(3, PrimaryFlag::yes, 0.3), record(1, PrimaryFlag::yes, 0.1), record(2, PrimaryFlag::yes, 0.2)}, 5);
    EXPECT_EQ(kept, (std::vector{0.1, 0.2}));
}

TEST_F(CollectionRankingTest, PartnerIsSeenWhicheverMotifIsStoredFirst) {
    const std::vector<double> kept =
        keptScores({record(2, PrimaryFlag::empty, 0.1), record(2, PrimaryFlag::yes, 0.2)}, 5);
    EXPECT_EQ(kept, (std::vector{0.1}));
}

TEST_F(CollectionRankingTest, OneMatchKeepsASecondPartnerRightBehindTheFirst) {
    EXPECT_EQ(keptScores({record(1, PrimaryFlag::yes, 0.1), record(2, PrimaryFlag::yes, 0.2)}, 1),
              (std::vector{0.1, 0.2}));
    EXPECT_EQ(
        keptScores(
            {record(1, PrimaryFlag::yes, 0.1), record(3, PrimaryFlag::yes, 0.2), record(2, PrimaryFlag::yes, 0.3)}, 1),
        (std::vector{0.1}));
}

TEST_F(CollectionRankingTest, MotifWithoutRecordKeepsItsPlace) {
    const RecordLists lists(2);
    EXPECT_EQ(matchesInCollection(testing::listedCollectionRecords(lists), 2, references, 3).size(), 2U);
}

}  // namespace
}  // namespace varnolix
