#pragma once

#include <string>
#include <vector>

#include "run/shared_records.h"

namespace varnolix {

/// The table of input files: names, motif counts (20 wide) and dataset numbers (15 wide). The titles given are those of
/// the first two columns.
std::string fileTable(const std::vector<fileNameAndType>& files, const char* nameTitle, const char* countTitle,
                      std::size_t nameWidth);

/// Length of the longest file name; 0 if there are no files.
std::size_t longestFileName(const std::vector<fileNameAndType>& files);

}  // namespace varnolix
