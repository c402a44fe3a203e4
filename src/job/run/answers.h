#pragma once

#include <string>

#include "job/job_motif.h"
#include "job/run/run_options.h"

namespace varnolix::job {

/// Fills the globals that the dialogue fills.
/// @param folder the job folder; its motif files must exist
/// @param collection the name of the collection, or "N"
void fillAnswers(const RunOptions& options, const std::string& folder, const JobSources& sources,
                 const std::string& collection);

/// The answers in the globals as lines, in the order of the questions: the dialogue runs the same job with them.
std::string answersText();

}  // namespace varnolix::job
