#include <algorithm>
#include <string>
#include <vector>

#include "input/input_block.h"
#include "job/downloads/reading/matrix_rows.h"
#include "job/downloads/reading/readers.h"
#include "job/downloads/reading/records.h"

// The layouts differ in what their headers say and in whether a row is a base or a position; all else is the same.

namespace varnolix::job {

namespace {

/// HOMER: the consensus, the name, the threshold and more, separated by tabs.
void nameByTabs(std::string_view header, DownloadedMotif& motif) {
    const std::size_t tab = header.find('\t');
    motif.id = trimmed(header.substr(0, tab));
    if (tab == std::string_view::npos) return;
    header.remove_prefix(tab + 1);
    motif.name = trimmed(header.substr(0, header.find('\t')));
}

/// Jaspar: the id, the name and perhaps the taxon.
void nameByWords(std::string_view header, DownloadedMotif& motif) {
    const Row words = splitTokens(header);
    if (!words.empty()) motif.id = words[0];
    if (words.size() > 1) motif.name = words[1];
    motif.taxon = joinedWords(words, 2);
}

/// The others: the id, and perhaps a name of several words.
void nameByFirstWord(std::string_view header, DownloadedMotif& motif) {
    const Row words = splitTokens(header);
    if (!words.empty()) motif.id = words[0];
    motif.name = joinedWords(words, 1);
}

bool hasRowsOfBases(Layout layout) {
    return layout == Layout::jaspar || layout == Layout::rows;
}

bool mayLackHeaders(Layout layout) {
    return layout == Layout::rows || layout == Layout::columns;
}

void readHeader(const Record& record, Layout layout, DownloadedMotif& motif) {
    if (layout == Layout::homer && record.header.find('\t') != std::string_view::npos) {
        nameByTabs(record.header, motif);
    } else if (hasRowsOfBases(layout)) {
        nameByWords(record.header, motif);
    } else {
        nameByFirstWord(record.header, motif);
    }
}

std::string readRowsOfBases(const Lines& body, std::vector<NumberColumn>& columns) {
    std::vector<BaseRow> rows;
    rows.reserve(body.size());
    for (const TextLine& line : body) rows.push_back(baseRowOf(line.text));
    return columnsOfBaseRows(rows, columns);
}

/// One position a line. The first line may name the bases.
std::string readPositions(const Lines& body, std::vector<NumberColumn>& columns) {
    BaseOrder order = usualOrder;
    for (const TextLine& line : body) {
        const Row values = splitTokens(line.text);
        if (&line == &body.front()) {
            if (const std::optional<BaseOrder> named = baseOrder(values)) {
                order = *named;
                continue;
            }
        }
        std::string reason = appendPosition(line, values, order, columns);
        if (!reason.empty()) return reason;
    }
    return columns.empty() ? "no rows of values" : "";
}

std::string readRecord(const Record& record, Layout layout, DownloadedMotif& motif) {
    if (!record.hasHeader && !mayLackHeaders(layout)) return "values before the first header line (\">ID NAME\")";
    if (record.hasHeader) readHeader(record, layout, motif);
    if (record.hasHeader && motif.id.empty()) return "a header without an id";
    return hasRowsOfBases(layout) ? readRowsOfBases(record.body, motif.columns)
                                  : readPositions(record.body, motif.columns);
}

}  // namespace

void readNumberRecords(const Lines& lines, Download& found) {
    for (const Record& record : recordsOf(lines)) {
        DownloadedMotif motif;
        motif.line = record.line;
        std::string reason = readRecord(record, found.layout, motif);
        takeOrRefuse(found, std::move(motif), std::move(reason));
    }
}

}  // namespace varnolix::job
