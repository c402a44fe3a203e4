#include <iostream>

#include "input/stages.h"
#include "report/text/file_table.h"

namespace varnolix {

void printFileNameTypeCount() {
    // Titles longer than the column run over its edge: the column is just as wide as the longest name.
    std::cout << "\nYour input files, types, and counts are:\n\n"
              << fileTable(FileNameType, "File Name", "Count of Motifs", longestFileName(FileNameType)) << '\n';
}

}  // namespace varnolix
