#pragma once

#include <string>
#include <vector>

#include "report/report_file.h"

// The bodies of the combined reports. They are text in every output format.

namespace varnolix {

/// The lines of all groups.
/// @param titleStart the title of a group up to the id of its motif, without the stars
std::string combinedGroupsText(const std::vector<std::vector<combinedMatrices>>& groups, const char* titleStart);

/// Appends the groups to the report.
void writeCombinedGroups(const ReportFile& report, const std::vector<std::vector<combinedMatrices>>& groups,
                         const char* titleStart);

}  // namespace varnolix
