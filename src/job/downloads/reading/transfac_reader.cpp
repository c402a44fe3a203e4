#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "input/input_block.h"
#include "job/downloads/reading/matrix_rows.h"
#include "job/downloads/reading/readers.h"

// An entry ends at "//", or where the next one begins: at a line that names it, or at the head of its positions.

namespace varnolix::job {

namespace {

constexpr std::size_t baseCount = 4;

struct Entry {
    std::map<std::string_view, std::string_view> texts;  ///< the first line of each tag
    std::vector<NumberColumn> columns;
    BaseOrder order = usualOrder;
    bool hasHead = false;
    std::size_t line = 0;  ///< of the first line that belongs to a motif; 0 while there is none
    std::string reason;    ///< of refusing it
};

bool namesEntry(std::string_view tag) {
    return tag == "AC" || tag == "ID" || tag == "NA" || tag == "DE";
}

bool isHead(std::string_view tag) {
    return tag == "P0" || tag == "PO";
}

bool isPositionNumber(std::string_view tag) {
    return std::all_of(tag.begin(), tag.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
}

std::string textOf(const Entry& entry, std::initializer_list<std::string_view> tags) {
    for (const std::string_view tag : tags) {
        if (const auto text = entry.texts.find(tag); text != entry.texts.end()) return std::string(text->second);
    }
    return "";
}

/// The organism: the OS line, or else what follows "Species: " in the first BF line.
std::string taxonOf(const Entry& entry) {
    constexpr std::string_view label = "Species: ";
    if (std::string organism = textOf(entry, {"OS"}); !organism.empty()) return organism;
    std::string factor = textOf(entry, {"BF"});
    const std::size_t at = factor.find(label);
    if (at == std::string::npos) return "";
    factor.erase(0, at + label.size());
    if (factor.ends_with('.')) factor.pop_back();
    return std::string(trimmed(factor));
}

void close(Entry& entry, Download& found) {
    if (entry.line > 0) {
        DownloadedMotif motif;
        motif.line = entry.line;
        motif.id = textOf(entry, {"AC", "ID", "NA", "DE"});
        motif.name = textOf(entry, {"NA", "ID", "DE"});
        motif.taxon = taxonOf(entry);
        motif.columns = std::move(entry.columns);
        if (motif.id.empty()) {
            entry.reason = "an entry without AC, ID, NA and DE lines";
        } else if (entry.reason.empty() && motif.columns.empty()) {
            entry.reason = "no position lines";
        }
        takeOrRefuse(found, std::move(motif), std::move(entry.reason));
    }
    entry = {};
}

/// The head of the positions names the order of the bases. Other letters, one each, are another alphabet.
void readHead(const Row& words, Entry& entry) {
    entry.hasHead = true;
    const auto letters = std::span(words).subspan(1, std::min(baseCount, words.size() - 1));
    if (const std::optional<BaseOrder> order = baseOrder(letters)) {
        entry.order = *order;
    } else if (letters.size() == baseCount && std::all_of(letters.begin(), letters.end(),
                                                          [](std::string_view letter) { return letter.size() == 1; })) {
        entry.reason = "positions of " + shown(joinedWords(words, 1)) + ", not of A, C, G and T";
    }
}

void readPosition(const TextLine& line, const Row& words, Entry& entry) {
    if (!entry.reason.empty()) return;
    const auto values = std::span(words).subspan(1);
    const bool hasConsensus = values.size() == baseCount + 1;
    entry.reason = appendPosition(line, hasConsensus ? values.first(baseCount) : values, entry.order, entry.columns);
}

}  // namespace

void readTransfac(const Lines& lines, Download& found) {
    Entry entry;
    bool hasPositions = false;
    for (const TextLine& line : lines) {
        const Row words = splitTokens(line.text);
        if (words.empty()) continue;
        const std::string_view tag = words[0];
        const bool isNew = namesEntry(tag) || isHead(tag);
        if (tag == "//" || (isNew && hasPositions) || (isHead(tag) && entry.hasHead)) {
            close(entry, found);
            hasPositions = false;
        }
        const bool isPosition = isPositionNumber(tag);
        if (entry.line == 0 && (isNew || isPosition)) entry.line = line.number;
        if (isHead(tag)) {
            readHead(words, entry);
        } else if (isPosition) {
            hasPositions = true;
            readPosition(line, words, entry);
        } else if (tag != "//" && words.size() > 1) {
            entry.texts.try_emplace(tag, trimmed(line.text.substr(tag.size())));
        }
    }
    close(entry, found);
}

}  // namespace varnolix::job
