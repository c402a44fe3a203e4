#pragma once

#include <filesystem>

#include "job/page/page_text.h"
#include "job/tables/tables.h"

namespace varnolix::job {

inline constexpr const char* pageName = "index.html";

/// Where the files of the page are: the template of this installation, and the libraries below /usr/share, or below the
/// folder that VARNOLIX_LIBRARIES names.
PageFiles pageFilesOf(const std::filesystem::path& home);

/// Writes the page of the job into its folder, when tables, trees and reports are there. Adds an entry to stageTimes.
/// Throws JobError if the template is not there or the page cannot be written.
/// @param jobName how the page is headed
void writePage(const JobSources& sources, const JobSignificance& significance, const std::vector<SkippedMotif>& skipped,
               const RecordedJob& job, const TableSettings& settings, const PageFiles& files,
               const std::string& jobName);

}  // namespace varnolix::job
