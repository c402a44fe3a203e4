#include "job/downloads/reading/records.h"

#include <algorithm>

#include "job/downloads/reading/matrix_rows.h"

namespace varnolix::job {

namespace {

constexpr std::size_t baseCount = 4;

bool isHeader(const TextLine& line) {
    return line.text.starts_with('>');
}

/// Whether four rows with letters are complete, so that another such row belongs to the next matrix.
bool isCompleteWithLetters(const Record& record, const TextLine& next) {
    return record.body.size() == baseCount && namesBase(baseRowOf(next.text)) &&
           std::all_of(record.body.begin(), record.body.end(),
                       [](const TextLine& line) { return namesBase(baseRowOf(line.text)); });
}

std::vector<Record> headedRecords(const Lines& lines) {
    std::vector<Record> records;
    for (const TextLine& line : lines) {
        if (isHeader(line)) {
            records.push_back({true, trimmed(line.text.substr(1)), line.number, {}});
        } else if (!line.text.empty() && !isComment(line.text)) {
            if (records.empty()) records.push_back({false, {}, line.number, {}});
            records.back().body.push_back(line);
        }
    }
    return records;
}

std::vector<Record> blocks(const Lines& lines) {
    std::vector<Record> records;
    bool isOpen = false;
    for (const TextLine& line : lines) {
        if (line.text.empty()) {
            isOpen = false;
        } else if (!isComment(line.text)) {
            if (!isOpen || isCompleteWithLetters(records.back(), line)) {
                records.push_back({false, {}, line.number, {}});
                isOpen = true;
            }
            records.back().body.push_back(line);
        }
    }
    return records;
}

}  // namespace

std::vector<Record> recordsOf(const Lines& lines) {
    return std::any_of(lines.begin(), lines.end(), isHeader) ? headedRecords(lines) : blocks(lines);
}

}  // namespace varnolix::job
