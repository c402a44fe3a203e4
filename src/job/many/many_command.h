#pragma once

#include <optional>
#include <string>

#include "job/many/job_list.h"

namespace varnolix::job {

/// The options of `varnolix-job many`.
struct ManyOptions {
    std::string list;
    std::string folder;  ///< empty: named as the list, in the working directory
    int jobs = 0;        ///< at once; 0: as many as there are processors, and for an array as many as there are nodes
    int threads = 0;     ///< of each job; 0: processors / jobs
    bool isQuiet = false;
    bool writesArray = false;  ///< for Slurm, instead of running the jobs
    bool submits = false;
    std::string time;    ///< as Slurm takes it; empty: estimated
    std::string memory;  ///< as Slurm takes it; empty: estimated
};

/// Runs the jobs of a list that are not done, or writes the script of an array of them, and collects what is there.
/// Returns the exit status: 1 if a job failed. Throws JobError.
int manyCommand(const ManyOptions& options, const RunSetup& setUpRun);

/// Collects what is there of the jobs in the folder.
int collectCommand(const std::string& folderName);

}  // namespace varnolix::job
