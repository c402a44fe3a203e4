#include "job/page/member_frame.h"

namespace varnolix::job {

namespace {

constexpr MatchingFormat otherStrand(MatchingFormat strand) {
    return strand == MatchingFormat::originalMotif ? MatchingFormat::reverseComplement : MatchingFormat::originalMotif;
}

/// The columns of the axis that no part covers are left out of the result.
/// @return how many columns before this one are left out
int leftOutBefore(int column, const StepPlacement& at, int combinedLength, int memberLength) {
    int count = 0;
    for (int place = 0; place < column; ++place) {
        const bool isOfCombined = place >= at.combinedOffset && place < at.combinedOffset + combinedLength;
        const bool isOfMember = place >= at.memberOffset && place < at.memberOffset + memberLength;
        count += isOfCombined || isOfMember ? 0 : 1;
    }
    return count;
}

}  // namespace

std::vector<FramedMember> framedMembers(std::span<const dataCombinedScore> group,
                                        std::span<const combinedMatrices> steps) {
    std::vector<FramedMember> members;
    if (steps.empty()) return members;
    int length = static_cast<int>(steps.front().matrix1.size());
    members.push_back({group.front().matrixID1, MatchingFormat::originalMotif, 0, length});
    for (std::size_t place = 0; place < steps.size(); ++place) {
        const combinedMatrices& step = steps[place];
        const StepPlacement at = placementOf(step);
        const int memberLength = static_cast<int>(step.matrix2.size());
        if (at.combined == MatchingFormat::reverseComplement) {
            for (FramedMember& member : members) {
                member.offset = length - member.offset - member.length;
                member.strand = otherStrand(member.strand);
            }
        }
        for (FramedMember& member : members) member.offset += at.combinedOffset;
        // The ids of a step are those of the two matrices that were aligned, not of the member.
        members.push_back({group[place].matrixID2, at.member, at.memberOffset, memberLength});
        for (FramedMember& member : members) {
            member.offset -= leftOutBefore(member.offset, at, length, memberLength);
        }
        length = static_cast<int>(step.combinedMatrix.size());
    }
    return members;
}

}  // namespace varnolix::job
