#include "report/text/file_table.h"

#include <algorithm>

#include "report/text/text_columns.h"

namespace varnolix {

std::string fileTable(const std::vector<fileNameAndType>& files, const char* nameTitle, const char* countTitle,
                      std::size_t nameWidth) {
    constexpr std::size_t countWidth = 20;
    constexpr std::size_t numberWidth = 15;
    std::string table;
    const auto addRow = [&](std::string_view name, std::string_view count, std::string_view number) {
        appendPadded(table, name, nameWidth);
        appendPadded(table, count, countWidth);
        appendPadded(table, number, numberWidth);
        table += '\n';
    };
    addRow(nameTitle, countTitle, "Dataset #");
    for (const fileNameAndType& file : files) {
        addRow(file.fileName, std::to_string(file.motifCount), std::to_string(file.datasetNum));
    }
    return table;
}

std::size_t longestFileName(const std::vector<fileNameAndType>& files) {
    std::size_t longest = 0;
    for (const fileNameAndType& file : files) longest = std::max(longest, file.fileName.size());
    return longest;
}

}  // namespace varnolix
