#pragma once

#include <string>
#include <vector>

#include "run/shared_records.h"

namespace varnolix {

/// The table of input files, with the padding of its columns: names in a column of this width, then counts (20 wide)
/// and dataset numbers (15 wide). The titles are those of the first two columns.
std::string fileTable(const std::vector<fileNameAndType>& files, const char* nameTitle, const char* countTitle,
                      std::size_t nameWidth);

/// Length of the longest file name.
std::size_t longestFileName(const std::vector<fileNameAndType>& files);

}  // namespace varnolix
