#pragma once

#include <string>
#include <vector>

#include "job/folder/installation.h"

namespace varnolix::job {

/// How an outside tool is asked for its version.
struct ToolQuestion {
    std::string name;
    std::string command;  ///< for the shell, which looks for the tool as a job does
    std::string pattern;  ///< regular expression whose first group is the version in the tool's answer
};

/// The outside tools of jobs, in the order in which they are printed.
std::vector<ToolQuestion> toolQuestions(const Installation& installation);

/// What the tools answer, in their order; empty where a tool is missing or has not answered within the limit. All are
/// asked at the same time, and who does not answer is ended.
/// @param limit in seconds, for each tool
std::vector<std::string> askTools(const std::vector<ToolQuestion>& questions, int limit);

/// The first group of the pattern's first match in the answer; empty if it does not match.
std::string versionIn(const std::string& answer, const std::string& pattern);

}  // namespace varnolix::job
