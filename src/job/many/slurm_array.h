#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "job/folder/collection_store.h"
#include "job/many/many_command.h"
#include "job/many/many_folder.h"

// Many jobs on a cluster: an array of tasks for Slurm, one for each job.

namespace varnolix::job {

/// The numbers as Slurm takes them, with ranges: "1,4-7". They ascend.
std::string arrayOf(const std::vector<std::size_t>& numbers);

/// What the size of a job is told by.
struct JobSize {
    std::size_t motifs = 0;
    std::size_t references = 0;  ///< motifs of the collection
};

/// Bytes that a job has room in: from measured jobs, with half as much again. Alignments are left out but for their
/// share, as a job makes do with the memory that it is given.
double roomFor(const JobSize& size, const RunOptions& options);

/// Minutes after which a job certainly should have ended: ten times what measured jobs took, and ten minutes.
double minutesFor(const JobSize& size, const RunOptions& options, int threads);

/// What all tasks of an array have in common.
struct ArrayNeeds {
    std::string memory;  ///< as Slurm takes it
    std::string time;    ///< as Slurm takes it
    int threads = 1;     ///< of a task
    int atOnce = 0;      ///< most tasks that run at once; 0: no limit
};

/// The script of an array.
/// @param number of the script, which does the jobs behind the first (number - 1) * tasksOfArray
std::string arrayScript(std::size_t number, const ManyFolder& folder, const KeptList& list,
                        const std::vector<std::size_t>& places, const ArrayNeeds& needs, const std::string& companion);

/// Slurm's default refuses arrays with a higher number than this.
inline constexpr std::size_t tasksOfArray = 1000;

/// Writes a script for each thousand jobs of the list of which some are to do, and prints the commands that submit
/// them, or submits them. Throws JobError.
/// @param collections where installed collections are looked up
void writeArrays(const ManyFolder& folder, const KeptList& list, const std::vector<ListedJob>& todo,
                 const ManyOptions& options, const RunSetup& setUpRun, const std::vector<CollectionPlace>& collections);

}  // namespace varnolix::job
