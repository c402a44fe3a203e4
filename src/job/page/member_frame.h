#pragma once

#include <span>
#include <vector>

#include "job/tables/combined_motifs.h"

namespace varnolix::job {

/// How a member of a group lies below the combined motif.
struct FramedMember {
    int motif;              ///< matrixID
    MatchingFormat strand;  ///< strand on which it lies there
    int offset;             ///< column of the combined motif, 0-based, that faces its first column; may be negative
    int length;             ///< its columns
};

/// The members that were merged, each below the combined motif of the last step. The table gives the place of a member
/// on the axis of its own step; later steps may shift and turn what was combined before.
/// @param group the records of the group: first the one of the motif that the group belongs to with its best match
/// @param steps the merged steps of the group, one for each record from the first on
std::vector<FramedMember> framedMembers(std::span<const dataCombinedScore> group,
                                        std::span<const combinedMatrices> steps);

}  // namespace varnolix::job
