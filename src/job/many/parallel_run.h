#pragma once

#include <string>
#include <vector>

#include "job/many/many_folder.h"

// Many jobs at once on this machine, by GNU parallel.

namespace varnolix::job {

/// The shell command of a job, whose output goes to its log.
/// @param companion path of the companion
std::string shellCommandOf(const std::string& companion, const ManyFolder& folder, const ListedJob& job, int threads);

/// Throws JobError, with the name of the package, if GNU parallel is not installed.
void requireParallel();

/// Runs the jobs, so many at once, in the working directory, and waits for them. A signal that ends this process ends
/// all of them. What a job died of is added to its log.
void runInParallel(const ManyFolder& folder, const std::vector<ListedJob>& jobs, int atOnce, int threads);

/// Whether a program of this name is in a folder of PATH.
bool isInPath(const std::string& program);

/// Path of this companion.
std::string companionPath();

}  // namespace varnolix::job
