#pragma once

namespace varnolix::job {

/// Runs the command that the arguments name and returns its exit status: 0, 1 if a job failed or was refused, 2 for
/// wrong use. Throws JobError.
int runCommandLine(int argc, char** argv);

}  // namespace varnolix::job
