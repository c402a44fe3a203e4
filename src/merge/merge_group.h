#pragma once

#include <vector>

#include "merge/two_matrix_scan.h"
#include "run/shared_records.h"

// Merges a top motif with its best matches, one at a time, in ranked order. The three families of groups share this
// code and differ only in their lists. They also share one work record, mergedMatrix: a member that is left out has no
// drawing of its own, so its record still holds the lines of the last merged step.

namespace varnolix {

/// What a merge needs besides its group.
struct MergeInput {
    const std::vector<data>& motifs;
    AlignmentLimits limits;
};

/// Merges one group, which holds at least one record.
/// @param work the work record; it keeps its contents from one step and one group to the next
/// @param steps collects the steps of this group; empty again afterwards
/// @param mergedGroups receives the steps, if there are any
void mergeGroup(const std::vector<dataCombinedScore>& group, const MergeInput& input, combinedMatrices& work,
                std::vector<combinedMatrices>& steps, std::vector<std::vector<combinedMatrices>>& mergedGroups);

/// The same for a group of input motifs, with the settings and the work record of this run.
void mergeInputGroup(const std::vector<dataCombinedScore>& group, std::vector<combinedMatrices>& steps,
                     std::vector<std::vector<combinedMatrices>>& mergedGroups);

}  // namespace varnolix
