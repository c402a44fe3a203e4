#pragma once

#include <string>
#include <vector>

#include "job/tables/table.h"

// What the columns of all tables mean, for the manual page.

namespace varnolix::job {

struct DescribedTable {
    const char* file;
    std::vector<ColumnNote> columns;
};

/// All tables that the companion writes.
std::vector<DescribedTable> describedTables();

/// The columns as rows of a table in the manual page: name, meaning, values.
std::string describedColumns(const DescribedTable& table);

}  // namespace varnolix::job
