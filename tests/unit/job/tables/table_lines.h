#pragma once

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace varnolix::testing {

/// The fields of a line between its tabs.
inline std::vector<std::string> fieldsOf(const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
        if (c == '\t') {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    return fields;
}

/// The rows of a table by the names of their columns. Fails the test if a row has another number of fields.
inline std::vector<std::map<std::string, std::string>> rowsOfTsv(const std::string& text) {
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    const std::vector<std::string> names = fieldsOf(line);
    std::vector<std::map<std::string, std::string>> rows;
    while (std::getline(lines, line)) {
        const std::vector<std::string> fields = fieldsOf(line);
        EXPECT_EQ(fields.size(), names.size()) << line;
        auto& row = rows.emplace_back();
        for (std::size_t n = 0; n < std::min(names.size(), fields.size()); ++n) row[names[n]] = fields[n];
    }
    return rows;
}

}  // namespace varnolix::testing
