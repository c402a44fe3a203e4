#include <iostream>

#include "input/stages.h"
#include "report/text/file_table.h"

namespace varnolix {

void printFileNameTypeCount() {
    // The column is only as wide as the longest name, so a longer title runs over its edge.
    std::cout << "\nYour input files, types, and counts are:\n\n"
              << fileTable(FileNameType, "File Name", "Count of Motifs", longestFileName(FileNameType)) << '\n';
}

}  // namespace varnolix
