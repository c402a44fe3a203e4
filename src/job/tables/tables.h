#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "job/job_motif.h"
#include "job/tables/combined_motifs.h"
#include "job/tables/job_record.h"
#include "job/tables/match_significance.h"

// Writes what a job has beside its reports. To be called when runJob() is through; reads the globals that it leaves.

namespace varnolix::job {

/// What runJob() left.
JobResults leftResults(const JobSources& sources);

/// The p-values of its matches, and its lists by significance. Adds an entry to stageTimes.
/// @param visit as of significanceOf()
JobSignificance leftSignificance(const JobSources& sources, const MatchVisitor& visit = {});

/// The groups of each list and what was merged of them; none if the job does not merge.
std::vector<MergedList> leftMerged();

struct Families;

struct TableSettings {
    std::string folder;                  ///< the job folder, where everything goes; with a slash at its end
    std::string treeScript;              ///< path of tools/tree_newick.R
    double mostQ = 1.0;                  ///< the tables leave out matches with a higher q-value
    const Families* families = nullptr;  ///< if the job has them
};

/// Where the tree of all matching goes, without extension: tree.nwk is that of the families where there are any.
std::string listTreeStem(const TableSettings& settings);

/// Writes the tables, the combined motifs, the families and the trees. Ends the run if a file cannot be written; a tree
/// that R cannot make is only noted. Adds an entry to stageTimes.
/// @return what the user should know, as sentences
std::vector<std::string> writeTables(const JobSources& sources, const JobSignificance& significance,
                                     const std::vector<SkippedMotif>& skipped, const TableSettings& settings);

/// What job.json says beyond what the stages and the folder tell.
struct RecordedJob {
    std::string version;
    const nlohmann::ordered_json& settings;  ///< the options of the job, by name
    std::vector<InputFile> inputs;
    std::vector<std::string> notes;         ///< sentences
    std::vector<std::string> command = {};  ///< the words behind the name of the companion
    double begin = 0;                       ///< when the job began, by omp_get_wtime
};

/// The record of the job as it stands now.
JobRecord recordOf(const RecordedJob& job, const TableSettings& settings);

/// Writes job.json, as a whole or not at all. Nothing may be written to the folder afterwards.
void writeJobRecord(const JobSources& sources, const RecordedJob& job, const TableSettings& settings);

}  // namespace varnolix::job
