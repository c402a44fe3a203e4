#include "merge/merge_group.h"

#include <limits>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::motifOfText;

class MergeGroupTest : public testing::RunTest {
  protected:
    static dataCombinedScore record(int first, int second, unsigned columns) {
        dataCombinedScore made{};
        made.matrixID1 = first;
        made.matrixID2 = second;
        made.position = 1;
        made.overlap = columns & 0xFFU;
        made.primaryFlag = PrimaryFlag::yes;
        made.combinedScore = 0.5;
        return made;
    }

    /// The flags of all steps, for example "YYN".
    std::string flags() const {
        std::string text;
        for (const auto& group : merged) {
            for (const combinedMatrices& step : group) text += step.mergedFlag;
        }
        return text;
    }

    void merge(const std::vector<dataCombinedScore>& group) {
        mergeGroup(group, {Datasets, {4, 1.0, cutoff}}, work, steps, merged);
        EXPECT_TRUE(steps.empty());
    }

    double cutoff = 0.9;
    combinedMatrices work;
    std::vector<combinedMatrices> steps;
    std::vector<std::vector<combinedMatrices>> merged;
};

TEST_F(MergeGroupTest, OneRecordIsOneMerge) {
    Datasets = {motifOfText(1, "AACCA"), motifOfText(2, "AACC")};
    merge({record(1, 2, 4)});
    ASSERT_EQ(flags(), "Y");
    const combinedMatrices& step = merged[0][0];
    EXPECT_EQ(step.matrixID1, 1);
    EXPECT_EQ(step.matrixID2, 2);
    EXPECT_EQ(step.motifName1, "motif1");
    EXPECT_EQ(step.motifName2, "motif2");
    EXPECT_EQ(step.combinedScore, 0.5);
    EXPECT_EQ(step.position, 1);
    EXPECT_EQ(step.overlap, 4);
    EXPECT_EQ(step.matrix1, Datasets[0].matrix);
    EXPECT_EQ(step.matrix2, Datasets[1].matrix);
    EXPECT_EQ(step.combinedMatrix, Datasets[0].matrix);
    EXPECT_EQ(step.alignedMotif1, "AACCA");
    EXPECT_EQ(step.alignedMotif2, "AACC-");
}

TEST_F(MergeGroupTest, ReversedMotifIsMergedByItsReverseComplement) {
    Datasets = {motifOfText(1, "AACCA"), motifOfText(2, "TGGTT")};
    dataCombinedScore reversed = record(1, 2, 5);
    reversed.matchingFormat2 = MatchingFormat::reverseComplement;
    merge({reversed});
    ASSERT_EQ(flags(), "Y");
    EXPECT_EQ(merged[0][0].matrix2, Datasets[1].revCompMatrix);
    EXPECT_EQ(merged[0][0].combinedMatrix, Datasets[0].matrix);
    EXPECT_EQ(merged[0][0].alignedMotif2, "AACCA");
}

TEST_F(MergeGroupTest, RefusedFirstPairLeavesAllOut) {
    // Columns that are half A and half C do not match either motif at this cutoff.
    Datasets = {motifOfText(1, "AAAA"), motifOfText(2, "CCCC"), motifOfText(3, "AAAA")};
    dataCombinedScore reversed = record(1, 3, 4);
    reversed.matchingFormat2 = MatchingFormat::reverseComplement;
    merge({record(1, 2, 4), reversed});
    ASSERT_EQ(flags(), "NN");
    EXPECT_EQ(merged[0][0].matrix1, Datasets[0].matrix);
    EXPECT_EQ(merged[0][0].matrix2, Datasets[1].matrix);
    EXPECT_EQ(merged[0][0].combinedMatrix, Datasets[1].matrix);
    EXPECT_EQ(merged[0][1].matrixID2, 3);
    EXPECT_EQ(merged[0][1].motifName2, "motif3");
    EXPECT_EQ(merged[0][1].combinedMatrix, Datasets[2].revCompMatrix);
}

TEST_F(MergeGroupTest, MembersLeftOutKeepTheDrawingOfTheLastStep) {
    Datasets = {motifOfText(1, "AACCA"), motifOfText(2, "AACCA"), motifOfText(3, "AAAA"), motifOfText(4, "CCCC")};
    merge({record(1, 2, 5)});
    merge({record(3, 4, 4)});
    ASSERT_EQ(flags(), "YN");
    EXPECT_EQ(merged[1][0].alignedMotif1, "AACCA");
}

TEST_F(MergeGroupTest, MembersFollowTheFirstPair) {
    Datasets = {motifOfText(1, "AACCA"), motifOfText(2, "AACCA"), motifOfText(3, "AACC")};
    merge({record(1, 2, 5), record(1, 3, 4)});
    ASSERT_EQ(flags(), "YY");
    const combinedMatrices& step = merged[0][1];
    EXPECT_EQ(step.matrixID1, 1);
    EXPECT_EQ(step.matrixID2, 2);
    EXPECT_EQ(step.motifName1, "Combined Motif");
    EXPECT_EQ(step.motifName2, "motif3");
    EXPECT_EQ(step.combinedScore, 0.0);
    EXPECT_EQ(step.matrix1, merged[0][0].combinedMatrix);
    EXPECT_EQ(step.matrix2, Datasets[2].matrix);
}

TEST_F(MergeGroupTest, RefusedMemberAndAllLaterOnesAreLeftOut) {
    // The member is three columns followed by the merged motif, and its first column is not a number. The two align
    // over the five columns that they share. But their merge still begins with the odd column, so it aligns with
    // nothing.
    data odd = motifOfText(3, "CCCAACGA");
    odd.matrix[0].fill(std::numeric_limits<double>::quiet_NaN());
    Datasets = {motifOfText(1, "AACGA"), motifOfText(2, "AACGA"), testing::motifOfMatrix(3, odd.matrix, 1, "odd"),
                motifOfText(4, "AACGA")};
    merge({record(1, 2, 5), record(1, 3, 5), record(1, 4, 5)});
    ASSERT_EQ(flags(), "YNN");
    EXPECT_EQ(merged[0][1].motifName1, "motif1");
    EXPECT_EQ(merged[0][1].motifName2, "odd");
    EXPECT_EQ(merged[0][2].combinedMatrix, Datasets[3].matrix);
    EXPECT_EQ(merged[0][2].alignedMotif1, "AACGA");
}

TEST_F(MergeGroupTest, OrderDeterminesTheWeights) {
    cutoff = 0.5;
    Datasets = {motifOfText(1, "AAAA"), motifOfText(2, "MMMM"), motifOfText(3, "AAAA")};
    merge({record(1, 2, 4), record(1, 3, 4)});
    ASSERT_EQ(flags(), "YY");
    EXPECT_EQ(merged[0][0].combinedMatrix, Matrix(4, Column{0.75, 0.25, 0, 0}));
    EXPECT_EQ(merged[0][1].combinedMatrix, Matrix(4, Column{0.875, 0.125, 0, 0}));
}

TEST_F(MergeGroupTest, MemberWithoutAlignmentEndsTheGroupSilently) {
    Datasets = {motifOfText(1, "AACCA"), motifOfText(2, "AACCA"), motifOfText(3, "GTGTGT"), motifOfText(4, "AACCA")};
    merge({record(1, 2, 5), record(1, 3, 4), record(1, 4, 5)});
    EXPECT_EQ(flags(), "Y");
}

TEST_F(MergeGroupTest, ShortMemberEndsTheGroupSilently) {
    Datasets = {motifOfText(1, "AACCA"), motifOfText(2, "AACCA"), motifOfText(3, "AAC")};
    merge({record(1, 2, 5), record(1, 3, 3)});
    EXPECT_EQ(flags(), "Y");
}

}  // namespace
}  // namespace varnolix
