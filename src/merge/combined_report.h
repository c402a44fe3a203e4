#pragma once

#include <string>
#include <vector>

#include "report/report_file.h"

// The bodies of the reports on merged motifs, which are plain text in every output format.

namespace varnolix {

/// The lines of all groups.
/// @param titleStart the title of a group up to the id of its motif, without the stars
/// @param longestName length of the longest motif name of the run, which sets the width of the name columns
std::string combinedGroupsText(const std::vector<std::vector<combinedMatrices>>& groups, const char* titleStart,
                               std::size_t longestName);

/// Appends the groups to the report.
void writeCombinedGroups(const ReportFile& report, const std::vector<std::vector<combinedMatrices>>& groups,
                         const char* titleStart);

}  // namespace varnolix
