#include "job/tables/column_listing.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace varnolix::job {
namespace {

std::string manualPage() {
    std::ifstream file(VARNOLIX_PROJECT_FOLDER "/docs/tables.md");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The rows of the first table of a section, with its two lines of titles.
std::string tableOf(const std::string& page, const std::string& section) {
    const std::size_t heading = page.find("\n## " + section + "\n");
    if (heading == std::string::npos) return "no section " + section;
    const std::size_t begin = page.find("\n| ", heading) + 1;
    const std::size_t end = page.find("\n\n", begin);
    return page.substr(begin, end == std::string::npos ? end : end + 1 - begin);
}

TEST(ColumnListing, ManualPageDescribesTheColumns) {
    const std::string page = manualPage();
    for (const DescribedTable& table : describedTables()) {
        EXPECT_EQ(tableOf(page, table.file), describedColumns(table));
    }
}

TEST(ColumnListing, NamesAreUniqueWords) {
    for (const DescribedTable& table : describedTables()) {
        std::set<std::string> names;
        for (const ColumnNote& note : table.columns) {
            const std::string name = note.name;
            EXPECT_TRUE(names.insert(name).second) << name;
            EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"), std::string::npos) << name;
        }
    }
}

}  // namespace
}  // namespace varnolix::job
