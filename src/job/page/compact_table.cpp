#include "job/page/compact_table.h"

#include <string_view>

namespace varnolix::job {

namespace {

std::string_view withoutFirst(std::string_view list) {
    return list.empty() ? list : list.substr(1);
}

void appendName(std::string& text, const char* name, std::string_view value) {
    text += name;
    appendJsonValue(text, value);
}

}  // namespace

void CompactTable::Column::add(const Cell& cell) {
    cells += ',';
    const auto* words = std::get_if<std::string_view>(&cell);
    if (words == nullptr) {
        appendJsonValue(cells, cell);
        return;
    }
    hasTexts = true;
    auto found = places.find(*words);
    if (found == places.end()) {
        found = places.emplace(*words, places.size()).first;
        texts += ',';
        appendJsonValue(texts, cell);
    }
    appendJsonValue(cells, static_cast<std::int64_t>(found->second));
}

std::string CompactTable::json() const {
    std::string text = "{\"rows\":" + std::to_string(rows_) + ",\"columns\":[";
    const char* before = "";
    for (const Column& column : columns_) {
        text += before;
        appendName(text, "{\"name\":", column.note.name);
        appendName(text, ",\"meaning\":", column.note.meaning);
        appendName(text, ",\"range\":", column.note.range);
        if (column.hasTexts) text.append(",\"texts\":[").append(withoutFirst(column.texts)).append("]");
        text.append(",\"cells\":[").append(withoutFirst(column.cells)).append("]}");
        before = ",\n";
    }
    return text + "]}";
}

}  // namespace varnolix::job
