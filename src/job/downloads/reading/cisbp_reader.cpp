#include <map>
#include <span>
#include <string>
#include <vector>

#include "input/input_block.h"
#include "job/downloads/reading/matrix_rows.h"
#include "job/downloads/reading/readers.h"

// Lines of a key and a text, such as "Motif" and "TF Name", then the head of the table and one position a line. A file
// of one motif may have the table alone.

namespace varnolix::job {

namespace {

struct Table {
    std::map<std::string, std::string_view> texts;  ///< by key in lower case
    std::optional<BaseOrder> order;                 ///< set at the head of the table
    std::vector<NumberColumn> columns;
    std::size_t line = 0;  ///< of the first line; 0 while there is none
    std::string reason;
};

std::string textOf(const Table& table, const std::string& key) {
    const auto text = table.texts.find(key);
    return text == table.texts.end() ? "" : std::string(text->second);
}

void close(Table& table, Download& found) {
    if (table.line > 0) {
        DownloadedMotif motif;
        motif.line = table.line;
        motif.id = textOf(table, "motif");
        motif.name = textOf(table, "tf name");
        if (motif.id.empty()) motif.id = textOf(table, "tf");
        if (motif.id.empty()) motif.id = motif.name;
        motif.columns = std::move(table.columns);
        if (table.reason.empty() && !table.order) table.reason = "no table of positions (Pos A C G T)";
        if (table.reason.empty() && motif.columns.empty()) table.reason = "no rows of values";
        takeOrRefuse(found, std::move(motif), std::move(table.reason));
    }
    table = {};
}

/// A line above the table: a key, a tab, and the text.
void readText(std::string_view line, Table& table) {
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) return;
    table.texts.try_emplace(lowered(trimmed(line.substr(0, tab))), trimmed(line.substr(tab + 1)));
}

void readPosition(const TextLine& line, const Row& words, Table& table) {
    if (!table.reason.empty()) return;
    table.reason = appendPosition(line, std::span(words).subspan(1), *table.order, table.columns);
}

bool beginsWithDigit(std::string_view line) {
    return line[0] >= '0' && line[0] <= '9';
}

}  // namespace

void readCisbp(const Lines& lines, Download& found) {
    Table table;
    for (const TextLine& line : lines) {
        if (line.text.empty() || isComment(line.text)) continue;
        const std::optional<BaseOrder> order = orderOfTableHead(line.text);
        const bool isRow = table.order && !order && beginsWithDigit(line.text);
        if (table.order && !isRow) close(table, found);
        if (table.line == 0) table.line = line.number;
        if (order) {
            table.order = order;
        } else if (isRow) {
            readPosition(line, splitTokens(line.text), table);
        } else {
            readText(line.text, table);
        }
    }
    close(table, found);
}

}  // namespace varnolix::job
