#include "job/many/parallel_run.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

#include "job/folder/files.h"
#include "job/job_error.h"
#include "run/system/outside_text.h"
#include "run/system/outside_tool.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

/// What ends a job whose parent is gone: else it would go on beside the one that takes its place.
constexpr const char* watcher = "setpriv";

/// What is put before a command so that it ends with its parent. If that is gone already, nothing is started.
/// @param parent its number, or what the shell takes for it
std::string endsWith(const std::string& parent) {
    if (!isInPath(watcher)) return "";
    return std::string(watcher) + R"( --pdeathsig TERM sh -c '[ "$PPID" = )" + parent + R"( ] && exec "$0" "$@"' )";
}

/// Adds to the logs what the processes died of, by GNU parallel's log: one line for each job that has ended.
void noteDeaths(const ManyFolder& folder, const std::vector<ListedJob>& jobs) {
    std::ifstream joblog(folder.joblog());
    std::string line;
    std::getline(joblog, line);
    while (std::getline(joblog, line)) {
        std::istringstream cells(line);
        std::size_t number = 0;
        std::string host;
        double skipped = 0;
        int status = 0;
        int signal = 0;
        if (!(cells >> number >> host >> skipped >> skipped >> skipped >> skipped >> status >> signal)) continue;
        if (number == 0 || number > jobs.size() || (status == 0 && signal == 0)) continue;
        const ListedJob& job = jobs[number - 1];
        if (signal != 0) {
            std::ofstream(folder.log(job), std::ios::app) << "the job was ended by signal " << signal << '\n';
        } else if (failureOf(folder, job).empty()) {
            std::ofstream(folder.log(job), std::ios::app) << "the job ended with status " << status << '\n';
        }
    }
}

}  // namespace

bool isInPath(const std::string& program) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((fs::path(folder.empty() ? "." : folder) / program).c_str(), X_OK) == 0) return true;
    }
    return false;
}

std::string companionPath() {
    return fs::read_symlink("/proc/self/exe").string();
}

std::string shellCommandOf(const std::string& companion, const ManyFolder& folder, const ListedJob& job, int threads) {
    std::string command = singleQuoted(companion);
    for (const std::string& word : commandOf(folder, job, threads)) command += " " + singleQuoted(word);
    return command + " > " + singleQuoted(folder.log(job).string()) + " 2>&1";
}

void requireParallel() {
    if (!isInPath("parallel")) {
        throw JobError("GNU parallel, which runs the jobs, is not installed; Debian's package parallel has it");
    }
}

void runInParallel(const ManyFolder& folder, const std::vector<ListedJob>& jobs, int atOnce, int threads) {
    const fs::path commands = folder.work() / "commands";
    const std::string companion = companionPath();
    {
        FreshFile file(commands);
        for (const ListedJob& job : jobs) {
            file.stream() << "exec " << endsWith("\"$PARALLEL_PID\"") << shellCommandOf(companion, folder, job, threads)
                          << '\0';
        }
        file.finish();
    }
    fs::remove(folder.joblog());
    // The tools of a job get some seconds to clear up before they are killed. What the user has set for GNU parallel
    // must not change our jobs.
    const std::string call = "PARALLEL_SHELL=/bin/sh exec " + endsWith(std::to_string(getpid())) +
                             "parallel --plain --will-cite --null --ungroup --termseq TERM,6000,KILL,100 --jobs " +
                             std::to_string(atOnce) + " --joblog " + singleQuoted(folder.joblog().string()) +
                             " --arg-file " + singleQuoted(commands.string()) + " < /dev/null";
    {
        ToolWork work({});
        work.run(call, "");
    }
    fs::remove(commands);
    noteDeaths(folder, jobs);
    if (!fs::exists(folder.joblog())) {
        throw JobError("parallel did not start the jobs; it may be another program of this name than GNU parallel");
    }
}

}  // namespace varnolix::job
