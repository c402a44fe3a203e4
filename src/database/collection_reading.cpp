#include "database/collection_reading.h"

#include <map>
#include <utility>

#include "input/readers.h"
#include "run/collections.h"
#include "run/run_text.h"
#include "run/system/run_limits.h"

namespace varnolix {

namespace {

/// The tokens joined by a blank.
std::string joined(std::span<const std::string_view> tokens) {
    std::string text;
    for (const std::string_view token : tokens) {
        if (!text.empty()) text += ' ';
        text += token;
    }
    return text;
}

std::string_view withoutBrackets(std::string_view token) {
    const std::size_t from = token.find_first_not_of("[]");
    if (from == std::string_view::npos) return {};
    return token.substr(from, token.find_last_not_of("[]") - from + 1);
}

std::vector<double> rowValues(std::span<const std::string_view> tokens) {
    std::vector<double> values;
    for (const std::string_view token : tokens) {
        const std::string_view number = withoutBrackets(token);
        if (!number.empty()) values.push_back(parseNumber(number));
    }
    return values;
}

void appendReference(std::vector<data>& motifs, data motif) {
    requireAtMost(motifs.size() + 1, mostMotifs, "motifs");
    requireAtMost(motif.matrix.size(), mostColumns, "positions of a motif");
    motif.matrixID = static_cast<int>(motifs.size()) + 1;
    motif.motifNum = motif.matrixID;
    motif.datasetNum = 1;
    deriveForms(motif);
    motifs.push_back(std::move(motif));
}

/// The lines of one entry that describe its motif, by tag. Only the first line of each tag is kept.
using EntryTexts = std::map<std::string_view, std::string, std::less<>>;

std::string firstOf(const EntryTexts& texts, std::initializer_list<std::string_view> tags) {
    for (const std::string_view tag : tags) {
        if (const auto text = texts.find(tag); text != texts.end()) return text->second;
    }
    return "";
}

/// The organism: the OS line, or else what follows "Species: " in the first BF line, without the final point.
std::string taxonOf(const EntryTexts& texts) {
    constexpr std::string_view label = "Species: ";
    if (std::string organism = firstOf(texts, {"OS"}); !organism.empty()) return organism;
    std::string factor = firstOf(texts, {"BF"});
    const std::size_t at = factor.find(label);
    if (at == std::string::npos) return "";
    factor.erase(0, at + label.size());
    if (factor.ends_with('.')) factor.pop_back();
    return factor;
}

data transfacMotif(const EntryTexts& texts, Matrix matrix) {
    data motif;
    motif.motifName = firstOf(texts, {"NA", "ID", "DE"});
    motif.motifID = texts.contains("AC") ? firstOf(texts, {"AC"}) : motif.motifName;
    motif.taxon = taxonOf(texts);
    motif.matrix = std::move(matrix);
    return motif;
}

bool startsEntry(std::string_view tag) {
    return tag == "AC" || tag == "ID" || tag == "NA" || tag == "DE";
}

}  // namespace

std::vector<data> motifsOfBaseRows(const Block& rows, std::string_view taxon) {
    constexpr std::string_view bases = "ACGT";
    std::vector<data> motifs;
    data header;
    header.taxon = taxon;
    std::array<std::vector<double>, 4> values;
    for (const Row& row : rows) {
        if (row[0][0] == '>') {
            header.motifID = row[0].substr(1);
            header.motifName = row.size() > 1 ? row[1] : row[0].substr(1);
            header.taxon = !taxon.empty() || row.size() < 3 ? std::string(taxon) : joined(std::span(row).subspan(2));
            values = {};
            continue;
        }
        const std::size_t base = row[0].size() == 1 ? bases.find(row[0][0]) : std::string_view::npos;
        if (base == std::string_view::npos) continue;
        values[base] = rowValues(std::span(row).subspan(1));
        if (bases[base] != 'T') continue;
        data motif = header;
        motif.matrix = positionsFromBaseRows(values);
        appendReference(motifs, std::move(motif));
        values = {};
    }
    return motifs;
}

std::vector<data> motifsOfTransfacEntries(const Block& rows) {
    std::vector<data> motifs;
    EntryTexts texts;
    Matrix matrix;
    const auto closeEntry = [&] {
        if (!matrix.empty()) appendReference(motifs, transfacMotif(texts, std::exchange(matrix, {})));
        texts.clear();
    };
    for (const Row& row : rows) {
        if (isTransfacPosition(row)) {
            matrix.push_back(frequenciesOfTokens(row, 1));
            continue;
        }
        if (row[0] == "//" || (startsEntry(row[0]) && !matrix.empty())) closeEntry();
        if (row[0] != "//") texts.try_emplace(row[0], joined(std::span(row).subspan(1)));
    }
    closeEntry();
    return motifs;
}

void readCollection(void (*readMatrices)(const Block& rows)) {
    const Collection* collection = findCollection(DBName);
    std::string text;
    if (!readWholeFile(getCurrentDirectory() + std::string(collection->file), text)) endRun(invalidInputPathMessage);
    Block rows;
    forEachLine(text, [&rows](std::string_view line) {
        Row row = splitTokens(stripLineEnd(line));
        if (!row.empty()) rows.push_back(std::move(row));
    });
    readMatrices(rows);
}

}  // namespace varnolix
