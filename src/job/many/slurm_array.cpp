#include "job/many/slurm_array.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "job/folder/files.h"
#include "job/job_error.h"
#include "job/many/parallel_run.h"
#include "job/run/job_sources.h"
#include "rank/memory_plan.h"
#include "run/system/outside_text.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

// Measured with generated motifs, 500 to 4000, and rounded up; docs/many.md has the rule.
constexpr double bytesOfProgram = 64e6;
constexpr double bytesOfMotif = 40e3;
constexpr double bytesOfBestMatch = 4e3;
constexpr double bytesOfTools = 500e6;        // for pages: WebLogo, PHP and a converter
constexpr double bytesOfPagedMotif = 1e6;     // in a converter
constexpr double bytesOfTreeProgram = 300e6;  // R
constexpr double bytesOfTreePair = 48;        // in R, which copies the distances
constexpr double roomBeside = 1.5;
constexpr double secondsOfPair = 15e-6;
constexpr double secondsOfPagedMotif = 2;
constexpr double patience = 10;
constexpr double leastMinutes = 10;
constexpr double minutesRounded = 15;
constexpr double bytesOfMegabyte = 1024.0 * 1024.0;
constexpr double megabytesRounded = 64;

bool hasPages(const RunOptions& options) {
    return options.format != "text";
}

double pairsOfJob(const JobSize& size) {
    const auto motifs = static_cast<double>(size.motifs);
    return motifs * (motifs - 1) / 2 + motifs * static_cast<double>(size.references);
}

double roundedUp(double number, double step) {
    return std::ceil(number / step) * step;
}

/// The needs of the largest of the jobs. Jobs that cannot be read fail by themselves.
ArrayNeeds needsOf(const std::vector<ListedJob>& jobs, const ManyOptions& many, const RunSetup& setUpRun,
                   const std::vector<CollectionPlace>& places) {
    ArrayNeeds needs{many.memory, many.time, std::max(1, many.threads), many.jobs};
    if (!needs.memory.empty() && !needs.time.empty()) return needs;
    double bytes = 0;
    double minutes = 0;
    for (const ListedJob& job : jobs) {
        const RunOptions options = runOptionsOf(job.arguments, setUpRun);
        JobSize size;
        try {
            const ReadSources read = readSources(options, places);
            size = {read.sources.motifs.size(), read.sources.references.size()};
        } catch (const JobError&) {
            continue;
        }
        bytes = std::max(bytes, roomFor(size, options));
        minutes = std::max(minutes, minutesFor(size, options, needs.threads));
    }
    if (needs.memory.empty()) {
        needs.memory = std::to_string(std::llround(roundedUp(bytes / bytesOfMegabyte, megabytesRounded))) + "M";
    }
    if (needs.time.empty()) needs.time = std::to_string(std::llround(roundedUp(minutes, minutesRounded)));
    return needs;
}

void submit(const std::string& command) {
    if (!isInPath("sbatch")) {
        throw JobError("Slurm's sbatch is not installed; Debian's package slurm-client has it");
    }
    std::cout.flush();
    std::string shell = "sh";
    std::string option = "-c";
    std::string text = "exec " + command;
    char* const arguments[] = {shell.data(), option.data(), text.data(), nullptr};
    pid_t child = 0;
    int status = 0;
    if (posix_spawn(&child, "/bin/sh", nullptr, nullptr, arguments, environ) != 0 ||
        waitpid(child, &status, 0) != child || status != 0) {
        throw JobError("Slurm did not take the array; the command was " + command);
    }
}

}  // namespace

std::string arrayOf(const std::vector<std::size_t>& numbers) {
    std::string text;
    for (std::size_t first = 0; first < numbers.size();) {
        std::size_t last = first;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
        text += (text.empty() ? "" : ",") + std::to_string(numbers[first]);
        if (last > first) text += "-" + std::to_string(numbers[last]);
        first = last + 1;
    }
    return text;
}

double roomFor(const JobSize& size, const RunOptions& options) {
    const auto motifs = static_cast<double>(size.motifs);
    const auto references = static_cast<double>(size.references);
    const int targets = size.references > 0 ? 2 : 1;
    double bytes = bytesOfProgram + (motifs + references) * bytesOfMotif +
                   motifs * options.bestMatches * bytesOfBestMatch * targets;
    if (hasPages(options)) bytes += bytesOfTools + (motifs + references) * bytesOfPagedMotif;
    if (options.drawsTree) bytes += bytesOfTreeProgram + motifs * (motifs - 1) / 2 * bytesOfTreePair;
    return bytes * roomBeside / (1 - alignmentShare);
}

double minutesFor(const JobSize& size, const RunOptions& options, int threads) {
    double seconds = pairsOfJob(size) * secondsOfPair / threads;
    if (options.drawsTree) seconds += pairsOfJob(size) * secondsOfPair;
    if (hasPages(options)) seconds += static_cast<double>(size.motifs + size.references) * secondsOfPagedMotif;
    constexpr double secondsOfMinute = 60;
    return leastMinutes + patience * seconds / secondsOfMinute;
}

std::string arrayScript(std::size_t number, const ManyFolder& folder, const KeptList& list,
                        const std::vector<std::size_t>& places, const ArrayNeeds& needs, const std::string& companion) {
    const std::size_t before = (number - 1) * tasksOfArray;
    std::vector<std::size_t> tasks;
    std::string cases;
    for (const std::size_t place : places) {
        const ListedJob& job = list.jobs[place];
        tasks.push_back(place - before + 1);
        cases += std::to_string(tasks.back()) + ")\n    log=" + singleQuoted(folder.log(job).string()) + "\n    job=(" +
                 singleQuoted(companion);
        for (const std::string& word : commandOf(folder, job, needs.threads)) cases += " " + singleQuoted(word);
        cases += ")\n    ;;\n";
    }
    const std::string name = std::to_string(number);
    const std::string console = "slurm-" + name + "-";
    return "#!/bin/bash\n# Jobs of a list, each a task of this array; made by varnolix-job many --slurm.\n"
           "#SBATCH --job-name=varnolix-" +
           name + "\n#SBATCH --array=" + arrayOf(tasks) + (needs.atOnce > 0 ? "%" + std::to_string(needs.atOnce) : "") +
           "\n#SBATCH --ntasks=1\n" + "#SBATCH --cpus-per-task=" + std::to_string(needs.threads) +
           "\n#SBATCH --mem=" + needs.memory + "\n#SBATCH --time=" + needs.time + "\n#SBATCH --output=" + console +
           "%a.txt\n" + "case $SLURM_ARRAY_TASK_ID in\n" + cases +
           "*)\n    echo \"no job has this number\"\n    exit 1\n    ;;\nesac\n" +
           "# What Slurm says of the task stands in the same file.\nln -sfn " +
           singleQuoted((folder.work() / console).string()) + "\"$SLURM_ARRAY_TASK_ID.txt\" \"$log\"\n" + "cd " +
           singleQuoted(list.folder.string()) + " || exit 1\n\"${job[@]}\"\n";
}

void writeArrays(const ManyFolder& folder, const KeptList& list, const std::vector<ListedJob>& todo,
                 const ManyOptions& options, const RunSetup& setUpRun,
                 const std::vector<CollectionPlace>& collections) {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.work())) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("slurm-") || name.starts_with("array-")) fs::remove(entry.path());
    }
    if (todo.empty()) return;
    const ArrayNeeds needs = needsOf(todo, options, setUpRun, collections);
    auto next = todo.begin();
    for (std::size_t number = 1; (number - 1) * tasksOfArray < list.jobs.size(); ++number) {
        std::vector<std::size_t> places;
        for (std::size_t place = (number - 1) * tasksOfArray;
             place < std::min(number * tasksOfArray, list.jobs.size()) && next != todo.end(); ++place) {
            if (list.jobs[place].line != next->line) continue;
            places.push_back(place);
            ++next;
        }
        if (places.empty()) continue;
        const fs::path script = folder.work() / ("array-" + std::to_string(number) + ".sh");
        writeFile(script, arrayScript(number, folder, list, places, needs, companionPath()));
        const std::string command =
            "sbatch --chdir=" + singleQuoted(folder.work().string()) + " " + singleQuoted(script.string());
        std::cout << command << std::endl;
        if (options.submits) submit(command);
    }
}

}  // namespace varnolix::job
