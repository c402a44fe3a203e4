#pragma once

#include <string>
#include <vector>

#include "run/shared_records.h"

namespace varnolix {

/// The table of input files: names in a column as wide as told, then counts (20 wide) and dataset numbers (15 wide),
/// all with their padding; a head row first, its name column titled as told.
std::string fileTable(const std::vector<fileNameAndType>& files, const char* nameTitle, const char* countTitle,
                      std::size_t nameWidth);

/// Length of the longest file name.
std::size_t longestFileName(const std::vector<fileNameAndType>& files);

/// Prints the files with their counts to the console.
void printFileNameTypeCount();

}  // namespace varnolix
