#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "job/tables/table.h"

namespace varnolix::job {

/// A table for the page, column by column, which is a third of the size of one object for each row: texts mostly
/// repeat, so each stands once, and the cells are places in the list of texts.
class CompactTable {
  public:
    template <class Columns>
    explicit CompactTable(const Columns& columns) {
        for (const auto& column : columns) columns_.push_back({column.note, "", "", {}, false});
    }

    template <class Columns, class Row>
    void add(const Columns& columns, const Row& row) {
        auto store = columns_.begin();
        for (const auto& column : columns) (store++)->add(column.cell(row));
        ++rows_;
    }

    /// {"rows": count, "columns": [{"name", "meaning", "range", "cells"}]}. In a column of texts there are also the
    /// "texts", and the cells are 0-based places among them. A cell without a value is null.
    std::string json() const;

  private:
    /// Lets texts be looked up without a copy.
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    struct Column {
        ColumnNote note;
        std::string cells;  ///< JSON values, a comma in front of each
        std::string texts;  ///< JSON strings, a comma in front of each
        std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> places;
        bool hasTexts;

        void add(const Cell& cell);
    };

    std::vector<Column> columns_;
    std::size_t rows_ = 0;
};

}  // namespace varnolix::job
