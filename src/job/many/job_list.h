#pragma once

#include <CLI/CLI.hpp>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "job/run/run_options.h"

// The list of jobs: a table with one job in each line, whose columns are the options of `run`.

namespace varnolix::job {

/// A line of the list.
struct ListedJob {
    std::string name;      ///< of its folder
    std::size_t line = 0;  ///< counted from 1
    /// What `run` gets of the line: options in the order of its help, "--", files.
    std::vector<std::string> arguments;
};

struct JobList {
    std::vector<ListedJob> jobs;
    std::vector<std::string> faults;  ///< "line N: what is wrong with it", in the order of the lines
};

/// Gives a parser the command `run`, whose options go into the structure. The list has no table of options of its own.
using RunSetup = std::function<CLI::App*(CLI::App& parser, RunOptions& options)>;

/// The options that the arguments of a job name. Throws CLI::ParseError.
RunOptions runOptionsOf(const std::vector<std::string>& arguments, const RunSetup& setUpRun);

/// Says what keeps the job from being started, in a clause; empty if nothing does.
using JobCheck = std::function<std::string(const RunOptions& options)>;

/// Reads the text of a list. Jobs with faults are left out of the jobs.
JobList readJobList(const std::string& text, const RunSetup& setUpRun, const JobCheck& check);

/// Why the name cannot be that of a job's folder, in a clause; empty if it can.
std::string nameFault(const std::string& name);

}  // namespace varnolix::job
