#pragma once

#include <filesystem>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "job/many/job_list.h"

// The folder of many jobs: one job folder for each, what is collected of them, and a folder `many` with the list, logs
// and scripts. Whether a job is done is told by its own folder alone.

namespace varnolix::job {

struct ManyFolder {
    std::filesystem::path base;  ///< an absolute path

    std::filesystem::path work() const { return base / "many"; }
    std::filesystem::path list() const { return work() / "list.json"; }
    std::filesystem::path joblog() const { return work() / "joblog.tsv"; }
    std::filesystem::path job(const ListedJob& job) const { return base / job.name; }
    /// What a job prints.
    std::filesystem::path log(const ListedJob& job) const { return work() / "logs" / (job.name + ".txt"); }
};

inline constexpr const char* collectedTable = "all_matches.tsv";
inline constexpr const char* summaryTable = "summary.tsv";

/// Whether a folder of many jobs has a file or folder of this name, which is none of a job.
bool isOwnEntry(const std::string& name);

/// What the companion is called with to run the job; the words of the list are the last ones.
std::vector<std::string> commandOf(const ManyFolder& folder, const ListedJob& job, int threads);

/// The list as it was read last.
struct KeptList {
    std::filesystem::path folder;  ///< of the list, where the jobs are started
    std::vector<ListedJob> jobs;
};

void keepList(const ManyFolder& folder, const KeptList& list);

/// Throws JobError if the folder holds no jobs of a list.
KeptList readKeptList(const ManyFolder& folder);

/// Makes sure that jobs may be put into the folder: it is empty, or was made for many jobs. Makes what is missing.
/// Throws JobError otherwise.
void claimManyFolder(const ManyFolder& folder);

/// The record of a job that is done: `job.json` is there and says so, it has the arguments of the list, and all files
/// that it lists are there with their sizes. Otherwise null.
nlohmann::ordered_json recordOfDone(const ManyFolder& folder, const ListedJob& job);

/// Checksums of files that were asked for, by path.
using Checksums = std::map<std::string, std::string>;

/// Whether the files that the job has read are still the same. Relative paths are below the working directory.
bool hasSameInputs(const nlohmann::ordered_json& record, Checksums& known);

/// Why a job that is not done failed: the last line of its log. Empty if it was not started, or was killed.
std::string failureOf(const ManyFolder& folder, const ListedJob& job);

}  // namespace varnolix::job
