#include "job/downloads/reading/layout_detection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "input/input_block.h"
#include "job/downloads/reading/letters.h"
#include "job/downloads/reading/matrix_rows.h"
#include "job/downloads/reading/plain_number.h"
#include "job/downloads/reading/records.h"
#include "job/downloads/reading/uniprobe_lines.h"

// Four rows of four values can be four bases or four positions. All records of a file are of one kind, so those that
// are certain decide for the others. Without a certain one the sums decide: the values of one position usually have the
// same sum in all positions.

namespace varnolix::job {

namespace {

constexpr std::size_t baseCount = 4;

bool isMemeLine(const TextLine& line) {
    const std::string_view text = line.text;
    return text.starts_with("MEME version") || text.starts_with("letter-probability matrix") || text == "MOTIF" ||
           text.starts_with("MOTIF ") || text.starts_with("MOTIF\t");
}

bool isTransfacLine(const TextLine& line) {
    const Row words = splitTokens(line.text.substr(0, 4));
    if (words.empty()) return false;
    constexpr std::array<std::string_view, 6> tags = {"AC", "ID", "NA", "DE", "P0", "PO"};
    return std::find(tags.begin(), tags.end(), words[0]) != tags.end();
}

bool isHeaderLine(const TextLine& line) {
    return line.text.starts_with('>');
}

bool isCisbpHead(const TextLine& line) {
    return orderOfTableHead(line.text).has_value();
}

bool isUniprobeLine(const TextLine& line) {
    return isUniprobeRow(line.text);
}

bool isNumberLine(const TextLine& line) {
    const BaseRow row = baseRowOf(line.text);
    if (row.letter != '\0' && !namesBase(row)) return false;
    return !row.values.empty() && std::all_of(row.values.begin(), row.values.end(), looksLikeNumber);
}

/// How much speaks for rows of bases, and how much for one position a line.
struct Votes {
    std::array<std::size_t, 2> certain = {};
    std::array<std::size_t, 2> bySums = {};
    std::array<std::size_t, 2> byLengths = {};
};

enum Direction { bases, positions };

bool areNearlyEqual(const std::array<double, 4>& sums) {
    constexpr double tolerance = 0.01;
    const auto [least, most] = std::minmax_element(sums.begin(), sums.end());
    return *most > 0 && *most - *least <= tolerance * *most;
}

void voteBySums(const std::vector<Row>& rows, Votes& votes) {
    std::array<double, 4> sumsOfRows = {};
    std::array<double, 4> sumsOfColumns = {};
    for (std::size_t row = 0; row < baseCount; ++row) {
        for (std::size_t place = 0; place < baseCount; ++place) {
            const double value = parseNumber(rows[row][place]);
            sumsOfRows[row] += value;
            sumsOfColumns[place] += value;
        }
    }
    if (areNearlyEqual(sumsOfRows) == areNearlyEqual(sumsOfColumns)) return;
    ++votes.bySums[areNearlyEqual(sumsOfRows) ? positions : bases];
}

void vote(const Record& record, Votes& votes) {
    std::vector<Row> rows;
    for (const TextLine& line : record.body) {
        BaseRow row = baseRowOf(line.text);
        if (row.letter != '\0') {
            const Row words = splitTokens(line.text);
            ++votes.certain[baseOrder(words) ? positions : bases];
            return;
        }
        rows.push_back(std::move(row.values));
    }
    if (rows.empty()) return;
    const auto ofFour = static_cast<std::size_t>(
        std::count_if(rows.begin(), rows.end(), [](const Row& row) { return row.size() == baseCount; }));
    const bool areOfOneLength =
        std::all_of(rows.begin(), rows.end(), [&rows](const Row& row) { return row.size() == rows.front().size(); });
    if (rows.size() == baseCount && ofFour == baseCount) {
        voteBySums(rows, votes);
    } else if (areOfOneLength && (ofFour > 0 || rows.size() == baseCount)) {
        ++votes.certain[ofFour > 0 ? positions : bases];
    } else {
        ++votes.byLengths[2 * ofFour > rows.size() ? positions : bases];
    }
}

/// HOMER's headers have at least three parts with tabs between them, of which the third is the threshold.
bool hasHomerHeader(const Record& record) {
    std::string_view header = record.header;
    for (int part = 0; part < 2; ++part) {
        const std::size_t tab = header.find('\t');
        if (tab == std::string_view::npos) return false;
        header.remove_prefix(tab + 1);
    }
    return looksLikeNumber(trimmed(header.substr(0, header.find('\t'))));
}

bool havePositions(const std::vector<Record>& records) {
    Votes votes;
    for (const Record& record : records) vote(record, votes);
    for (const auto& kind : {votes.certain, votes.bySums, votes.byLengths}) {
        if (kind[bases] != kind[positions]) return kind[positions] > kind[bases];
    }
    return std::any_of(records.begin(), records.end(), hasHomerHeader);
}

/// Names such as "AHR_HUMAN.H11MO.0.B" and "AHR.H12CORE.0.P.B".
bool hasHocomocoName(const Record& record) {
    const std::string_view name = record.header.substr(0, record.header.find_first_of(" \t"));
    const std::size_t version = name.find(".H1");
    return version != std::string_view::npos || name.ends_with("_HUMAN") || name.ends_with("_MOUSE");
}

Layout headedLayout(const Lines& lines) {
    const std::vector<Record> records = recordsOf(lines);
    std::size_t sequences = 0;
    std::size_t others = 0;
    for (const Record& record : records) {
        for (const TextLine& line : record.body) ++(isSequence(line.text) ? sequences : others);
    }
    if (sequences > others) return areSites(records) ? Layout::sites : Layout::consensus;
    if (!havePositions(records)) return Layout::jaspar;
    if (std::any_of(records.begin(), records.end(), hasHomerHeader)) return Layout::homer;
    if (std::any_of(records.begin(), records.end(), hasHocomocoName)) return Layout::hocomoco;
    return Layout::clusterBuster;
}

}  // namespace

std::string reasonAgainstText(std::string_view text) {
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        return "UTF-16 text; save it as UTF-8 first";
    }
    if (text.find('\0') != std::string_view::npos) return "not a text file (unpack it first if it is an archive)";
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    const std::size_t from = text.find_first_not_of(" \t\r\n");
    if (from == std::string_view::npos) return "no motif in it: the file is empty";
    if (text[from] != '<') return "";
    constexpr std::size_t shownBegin = 100;
    const std::string begin = lowered(text.substr(from, shownBegin));
    if (begin.starts_with("<!doctype html") || begin.starts_with("<html")) return "a web page, not a file of motifs";
    return "XML; take the text output of the program that wrote it";
}

std::optional<Layout> detectedLayout(const Lines& lines) {
    const auto has = [&lines](bool (*isLine)(const TextLine&)) {
        return std::any_of(lines.begin(), lines.end(), isLine);
    };
    if (has(isMemeLine)) return Layout::meme;
    if (has(isHeaderLine)) return headedLayout(lines);
    if (has(isCisbpHead)) return Layout::cisbp;
    if (has(isUniprobeLine)) return Layout::uniprobe;
    if (has(isTransfacLine)) return Layout::transfac;
    if (has(isNumberLine)) return havePositions(recordsOf(lines)) ? Layout::columns : Layout::rows;
    return std::nullopt;
}

}  // namespace varnolix::job
