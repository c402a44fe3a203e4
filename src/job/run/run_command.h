#pragma once

#include "job/run/run_options.h"

namespace varnolix::job {

/// Runs a whole job: reads the motifs, makes the job folder, runs the stages in it and writes the tables. Returns the
/// exit status. Throws JobError.
int runCommand(const RunOptions& options);

}  // namespace varnolix::job
