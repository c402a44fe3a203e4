#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "job/downloads/download.h"
#include "job/downloads/reading/source_lines.h"

// Rows of numbers, made into the columns of a motif: four rows of one base each, or one position a row. What cannot be
// taken is said in words; an empty reason means that all is well.

namespace varnolix::job {

/// Where A, C, G and T stand among four values.
using BaseOrder = std::array<std::size_t, 4>;

inline constexpr BaseOrder usualOrder = {0, 1, 2, 3};

/// The order that four letters name, in any case. U stands for T. Nothing if they are not these four.
std::optional<BaseOrder> baseOrder(std::span<const std::string_view> letters);

/// The order of the bases in the head of a CIS-BP table, such as "Pos A C G T"; nothing if the line is no such head.
std::optional<BaseOrder> orderOfTableHead(std::string_view line);

/// A row of values, perhaps of one base: "A 1 2", "A: 1 2", "A | 1 2", "A [ 1 2 ]", "[1 2]", "1 2".
struct BaseRow {
    char letter = '\0';  ///< in upper case; 0 if the row has none
    std::vector<std::string_view> values;
};

BaseRow baseRowOf(std::string_view line);

/// Whether the row names its base with one of the letters A, C, G, T or U.
bool namesBase(const BaseRow& row);

/// Columns of four rows, one for each base. Rows without letters are those of A, C, G and T in turn.
std::string columnsOfBaseRows(std::span<const BaseRow> rows, std::vector<NumberColumn>& columns);

/// Appends the column of a row that holds one position.
std::string appendPosition(const TextLine& line, std::span<const std::string_view> values, const BaseOrder& order,
                           std::vector<NumberColumn>& columns);

/// "line 7: "
std::string lineLabel(std::size_t line);

}  // namespace varnolix::job
