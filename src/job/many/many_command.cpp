#include "job/many/many_command.h"

#include <omp.h>

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

#include "job/counted.h"
#include "job/folder/files.h"
#include "job/folder/folder_lock.h"
#include "job/folder/installation.h"
#include "job/job_error.h"
#include "job/many/collected.h"
#include "job/many/parallel_run.h"
#include "job/many/slurm_array.h"
#include "job/page/write_page.h"
#include "job/run/job_sources.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

constexpr std::size_t mostPrinted = 50;

/// Prints the lines, or as many as one reads.
void sayEach(const std::vector<std::string>& lines) {
    for (std::size_t place = 0; place < std::min(lines.size(), mostPrinted); ++place) {
        std::cerr << "varnolix-job: " << lines[place] << '\n';
    }
    if (lines.size() > mostPrinted) std::cerr << "varnolix-job: and " << lines.size() - mostPrinted << " more\n";
}

/// Reads the list; the working directory is the folder of the list then, as its paths are meant from there.
KeptList readList(const ManyOptions& options, const RunSetup& setUpRun, const std::vector<CollectionPlace>& places) {
    const std::string text = readFile(options.list);
    KeptList list{fs::absolute(options.list).parent_path(), {}};
    fs::current_path(list.folder);
    JobList read = readJobList(text, setUpRun, [&](const RunOptions& run) {
        if (std::find(run.files.begin(), run.files.end(), "-") != run.files.end()) {
            return std::string("standard input cannot be a file of a list");
        }
        return missingSource(run, places);
    });
    if (!read.faults.empty()) {
        for (std::string& fault : read.faults) fault.insert(0, options.list + ": ");
        sayEach(read.faults);
        throw JobError("no job was started, as " + counted(read.faults.size(), "line") + " of " + options.list +
                       " cannot be used");
    }
    list.jobs = std::move(read.jobs);
    return list;
}

/// The jobs that are not done, in the order of the list. Those that are done with files that have changed since are
/// not.
std::vector<ListedJob> jobsToDo(const ManyFolder& folder, const std::vector<ListedJob>& jobs) {
    std::vector<ListedJob> todo;
    Checksums checksums;
    for (const ListedJob& job : jobs) {
        const nlohmann::ordered_json record = recordOfDone(folder, job);
        if (record.is_null() || !hasSameInputs(record, checksums)) todo.push_back(job);
    }
    return todo;
}

/// A job that is about to be done anew must not look done, nor failed.
void forget(const ManyFolder& folder, const ListedJob& job) {
    fs::remove(folder.job(job) / "job.json");
    fs::remove(folder.log(job));
}

/// Says which jobs are not done. @return the exit status
int sayOutcome(const ManyFolder& folder, const std::vector<JobSummary>& jobs, bool isQuiet) {
    std::vector<std::string> lacking;
    for (const JobSummary& job : jobs) {
        if (job.status == JobSummary::Status::failed) lacking.push_back("job " + job.name + " failed: " + job.error);
        if (job.status == JobSummary::Status::missing) lacking.push_back("job " + job.name + " is missing");
    }
    sayEach(lacking);
    if (!isQuiet) {
        std::cout << jobs.size() - lacking.size() << " of " << counted(jobs.size(), "job") << " done; open "
                  << (folder.base / pageName).string() << " in a browser\n";
    }
    return lacking.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

fs::path folderOf(const ManyOptions& options) {
    const fs::path named = options.folder.empty() ? fs::path(options.list).stem() : fs::path(options.folder);
    const std::string folder = fs::absolute(named).lexically_normal().string();
    // Without a slash at its end, so that its last part is its name.
    return folder.size() > 1 && folder.back() == '/' ? folder.substr(0, folder.size() - 1) : folder;
}

}  // namespace

int manyCommand(const ManyOptions& options, const RunSetup& setUpRun) {
    const Installation installation = findInstallation();
    const fs::path& home = installation.home;
    const std::vector<CollectionPlace> places = collectionPlaces(installation);
    const ManyFolder folder{folderOf(options)};
    const KeptList list = readList(options, setUpRun, places);
    const FolderLock lock(folder.base);
    claimManyFolder(folder);
    const std::vector<ListedJob> todo = jobsToDo(folder, list.jobs);
    if (!todo.empty() && !options.writesArray) requireParallel();
    keepList(folder, list);
    for (const ListedJob& job : todo) forget(folder, job);
    if (!options.isQuiet) {
        std::cout << counted(list.jobs.size(), "job") << ", " << list.jobs.size() - todo.size() << " done before"
                  << std::endl;
    }
    if (options.writesArray) {
        writeArrays(folder, list, todo, options, setUpRun, places);
        collect(folder, list.jobs, home);
        return EXIT_SUCCESS;
    }
    const int processors = omp_get_num_procs();
    const int atOnce = options.jobs > 0 ? options.jobs : processors;
    const int threads = options.threads > 0 ? options.threads : std::max(1, processors / atOnce);
    if (!todo.empty()) runInParallel(folder, todo, atOnce, threads);
    return sayOutcome(folder, collect(folder, list.jobs, home), options.isQuiet);
}

int collectCommand(const std::string& folderName) {
    const fs::path home = findInstallation().home;
    ManyOptions options;
    options.folder = folderName;
    const ManyFolder folder{folderOf(options)};
    const KeptList list = readKeptList(folder);
    const FolderLock lock(folder.base);
    return sayOutcome(folder, collect(folder, list.jobs, home), false);
}

}  // namespace varnolix::job
