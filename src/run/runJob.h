#pragma once

namespace varnolix {

/// Runs one job: the straight list of its stages, from reading the motif files to the closing message. The answers, the
/// job's identity and all output names must be known. Ends the process if the job cannot go on.
void runJob();

}  // namespace varnolix
