#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "input/input_block.h"
#include "job/downloads/reading/matrix_rows.h"
#include "job/downloads/reading/readers.h"
#include "job/downloads/reading/uniprobe_lines.h"

// The file of one protein may hold its matrix again, as energies or as the reverse complement; these are left out. A
// table without a name of its own has the name of the table before it.

namespace varnolix::job {

namespace {

constexpr std::size_t baseCount = 4;

struct Protein {
    std::string id;
    std::string name;
    std::size_t line = 0;
    bool waits = false;  ///< it was named, but none of its tables was a motif yet
};

struct Table {
    Lines text;  ///< the lines above the rows
    std::vector<BaseRow> rows;
    std::size_t line = 0;  ///< of the first row
};

bool beginsWith(const std::string& text, std::initializer_list<std::string_view> beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&text](std::string_view beginning) { return text.starts_with(beginning); });
}

/// A line that says what kind of table follows, or numbers the positions.
bool isTitle(const TextLine& line) {
    const std::string text = lowered(trimmed(line.text, "# "));
    const bool isHead =
        beginsWith(text, {"po", "p0"}) && (text.size() == 2 || std::isalnum(static_cast<unsigned char>(text[2])) == 0);
    return isHead || beginsWith(text, {"energy matrix", "reverse complement matrix", "probability matrix"});
}

bool announcesOtherMatrix(const TextLine& line) {
    return isTitle(line) && beginsWith(lowered(trimmed(line.text, "# ")), {"energy", "reverse complement"});
}

bool isNaming(const TextLine& line) {
    return !isTitle(line) && !trimmed(line.text, "# ").empty();
}

/// "UP" and five digits, perhaps a letter, perhaps "_" and a number.
bool isUniprobeId(std::string_view word) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    constexpr std::size_t least = 7;
    if (word.size() < least || !word.starts_with("UP")) return false;
    if (!std::all_of(word.begin() + 2, word.begin() + least, isDigit)) return false;
    word.remove_prefix(least);
    if (!word.empty() && word[0] >= 'A' && word[0] <= 'Z') word.remove_prefix(1);
    return word.empty() || (word.size() > 1 && word[0] == '_' && std::all_of(word.begin() + 1, word.end(), isDigit));
}

/// The words of a line. A colon ends a word and stays with it.
Row wordsOf(std::string_view line) {
    Row words;
    for (std::string_view word : splitTokens(line)) {
        for (std::size_t colon = word.find(':'); colon != std::string_view::npos && colon + 1 < word.size();
             colon = word.find(':')) {
            words.push_back(word.substr(0, colon + 1));
            word.remove_prefix(colon + 1);
        }
        words.push_back(word);
    }
    return words;
}

std::string_view bare(std::string_view word) {
    return trimmed(word, "#>:,");
}

/// What follows "Protein:" or "Gene:"; nothing if there is no such label.
std::string_view labelledName(const Row& words) {
    for (std::size_t word = 0; word + 1 < words.size(); ++word) {
        const std::string label = lowered(words[word]);
        if (label == "protein:" || label == "gene:") return bare(words[word + 1]);
    }
    return {};
}

Protein proteinOf(const Lines& naming) {
    Row words;
    for (const TextLine& line : naming) {
        const Row more = wordsOf(line.text);
        words.insert(words.end(), more.begin(), more.end());
    }
    Protein protein;
    protein.line = naming.front().number;
    protein.waits = true;
    const auto id = std::find_if(words.begin(), words.end(), [](auto word) { return isUniprobeId(bare(word)); });
    if (id != words.end()) protein.id = bare(*id);
    protein.name = labelledName(words);
    if (protein.name.empty()) {
        protein.name = protein.id;
        const Row last = wordsOf(naming.back().text);
        const auto word = std::find_if(last.begin(), last.end(),
                                       [&](auto each) { return !bare(each).empty() && bare(each) != protein.id; });
        if (word != last.end()) protein.name = bare(*word);
    }
    if (protein.id.empty()) protein.id = protein.name;
    return protein;
}

/// Names a protein that came without a table of probabilities.
void closeProtein(Protein& protein, Download& found) {
    if (protein.waits) found.refused.push_back({protein.id, protein.line, "no table of probabilities"});
    protein.waits = false;
}

void closeTable(Table& table, Protein& protein, Download& found) {
    Lines naming;
    std::copy_if(table.text.begin(), table.text.end(), std::back_inserter(naming), isNaming);
    if (!naming.empty()) {
        closeProtein(protein, found);
        protein = proteinOf(naming);
    }
    const bool isOther = std::any_of(table.text.begin(), table.text.end(), announcesOtherMatrix);
    if (!table.rows.empty() && !isOther) {
        DownloadedMotif motif;
        motif.id = protein.id;
        motif.name = protein.name;
        motif.line = protein.waits ? protein.line : table.line;
        protein.waits = false;
        std::string reason = columnsOfBaseRows(table.rows, motif.columns);
        takeOrRefuse(found, std::move(motif), std::move(reason));
    }
    table = {};
}

}  // namespace

bool isUniprobeRow(std::string_view line) {
    if (line.empty() || std::string_view("ACGTUacgtu").find(line[0]) == std::string_view::npos) return false;
    return trimmed(line.substr(1)).starts_with(':');
}

void readUniprobe(const Lines& lines, Download& found) {
    Table table;
    Protein protein;
    for (const TextLine& line : lines) {
        const bool isComplete = table.rows.size() == baseCount;
        const bool isInside = !table.rows.empty() && !isComplete;
        const bool isRow = isUniprobeRow(line.text) || (isInside && namesBase(baseRowOf(line.text)));
        if (!table.rows.empty() && (isRow ? isComplete : !line.text.empty())) closeTable(table, protein, found);
        if (isRow) {
            if (table.rows.empty()) table.line = line.number;
            table.rows.push_back(baseRowOf(line.text));
        } else if (!line.text.empty()) {
            table.text.push_back(line);
        }
    }
    closeTable(table, protein, found);
    closeProtein(protein, found);
}

}  // namespace varnolix::job
