#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "job/tables/job_results.h"
#include "job/tables/table.h"

// The merged motifs with their matrices, and the table of their members. The reports show only their consensus.

namespace varnolix::job {

/// The groups of one ranked list, and what was made of them.
struct MergedList {
    ListKind kind;
    const RecordLists& groups;  ///< none is empty
    /// One for each group, or none if the job merges no groups of this list. Step k belongs to record k of the group.
    const std::vector<std::vector<combinedMatrices>>& merged;
};

/// The steps of a group that were merged; they come first.
std::span<const combinedMatrices> mergedSteps(const std::vector<combinedMatrices>& steps);

/// How the parts of a step were laid together, before they were averaged. Both offsets count the columns of their
/// common axis; a negative one means that the part's first columns were cut off.
struct StepPlacement {
    MatchingFormat combined;  ///< strand of what was combined before
    MatchingFormat member;
    int combinedOffset;
    int memberOffset;
    int overlap;  ///< columns that both cover
};

/// @param step a merged one
StepPlacement placementOf(const combinedMatrices& step);

/// A member of a group: first the motif that the group belongs to, as step 0, then its matches by rank.
struct CombinedRow {
    ListKind list;
    int group;               ///< 1-based
    std::string combinedId;  ///< empty if the group has no combined motif
    int step;
    const data& member;
    MotifNames names;
    std::optional<double> combinedScore;     ///< of the match; none for step 0
    std::optional<StepPlacement> placement;  ///< none if the member was not merged; for step 0, that of step 1
    std::size_t length;                      ///< columns of the combined motif after the step
    const char* reason;                      ///< why the member was not merged; empty if it was
};

std::span<const TableColumn<CombinedRow>> combinedColumns();

/// All members of all groups.
std::string combinedTsv(const JobResults& results, std::span<const MergedList> lists);

/// A motif of shares as the motif files hold it. Values that are no numbers become 0.
DownloadedMotif motifOfShares(const std::string& id, const std::string& name, const Matrix& matrix);

/// The combined motif of each group that has one, in the order of the groups. The id is the one of the table, and the
/// name that of the motif that the group belongs to.
std::vector<DownloadedMotif> combinedMotifs(const JobResults& results, std::span<const MergedList> lists);

}  // namespace varnolix::job
