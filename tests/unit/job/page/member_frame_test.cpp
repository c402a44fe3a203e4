#include "job/page/member_frame.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "job/tables/merged_job.h"

namespace varnolix {
namespace {

using job::FramedMember;
using MemberFrameTest = testing::MergedJobTest;

const Matrix& drawnMatrix(const FramedMember& member) {
    const data& motif = Datasets.at(static_cast<std::size_t>(member.motif - 1));
    return member.strand == MatchingFormat::originalMotif ? motif.matrix : motif.revCompMatrix;
}

/// The column of a member that faces this column of the combined motif; none if it does not reach there.
const Column* facing(const FramedMember& member, int column) {
    const Matrix& matrix = drawnMatrix(member);
    const int place = column - member.offset;
    return place >= 0 && place < std::ssize(matrix) ? &matrix[static_cast<std::size_t>(place)] : nullptr;
}

/// What becomes of the column if each member is averaged with what was there before.
Column foldedColumn(const std::vector<FramedMember>& members, int column) {
    Column folded{};
    bool isEmpty = true;
    for (const FramedMember& member : members) {
        const Column* values = facing(member, column);
        if (values == nullptr) continue;
        for (std::size_t base = 0; base < folded.size(); ++base) {
            folded[base] = isEmpty ? (*values)[base] : (folded[base] + (*values)[base]) * 0.5;
        }
        isEmpty = false;
    }
    return folded;
}

TEST_F(MemberFrameTest, MembersMakeUpTheCombinedMotif) {
    int compared = 0;
    int turned = 0;
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        mergeRandom(seed);
        for (const job::MergedList& list : lists()) {
            for (std::size_t place = 0; place < list.merged.size(); ++place) {
                const auto steps = job::mergedSteps(list.merged[place]);
                const std::vector<FramedMember> members = job::framedMembers(list.groups[place], steps);
                ASSERT_EQ(members.size(), steps.empty() ? 0 : steps.size() + 1);
                if (steps.empty()) continue;
                // The reverse complement of a mean is not the mean of the reverse complements, as it depends on the
                // strongest base. So what was turned later on has other values, though in the same places.
                const bool isTurned = std::any_of(steps.begin() + 1, steps.end(), [](const combinedMatrices& step) {
                    return step.matchingFormat1 == MatchingFormat::reverseComplement;
                });
                const Matrix& combined = steps.back().combinedMatrix;
                for (int column = 0; column < std::ssize(combined); ++column) {
                    EXPECT_TRUE(std::any_of(members.begin(), members.end(), [&](const FramedMember& member) {
                        return facing(member, column) != nullptr;
                    }));
                    if (isTurned) continue;
                    const Column folded = foldedColumn(members, column);
                    for (std::size_t base = 0; base < folded.size(); ++base) {
                        EXPECT_NEAR(folded[base], combined[static_cast<std::size_t>(column)][base], 1e-12);
                    }
                }
                ++(isTurned ? turned : compared);
            }
        }
    }
    EXPECT_GT(compared, 20);
    EXPECT_GT(turned, 5);
}

TEST_F(MemberFrameTest, WithoutMergedStepsThereAreNoMembers) {
    EXPECT_TRUE(job::framedMembers({}, {}).empty());
}

}  // namespace
}  // namespace varnolix
