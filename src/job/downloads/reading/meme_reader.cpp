#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <vector>

#include "input/input_block.h"
#include "job/downloads/reading/matrix_rows.h"
#include "job/downloads/reading/plain_number.h"
#include "job/downloads/reading/readers.h"

// A whole report says each motif several times: as a title, sites, blocks, log-odds, probabilities and an expression.
// Only the letter-probability matrix is read. It belongs to the MOTIF line above it, or, in parts that were cut from a
// report, to the title "Motif NAME position-specific probability matrix".

namespace varnolix::job {

namespace {

constexpr std::string_view matrixLabel = "letter-probability matrix";

struct Report {
    std::string alphabet;  ///< why the alphabet cannot be taken; empty if it can
    bool isInAlphabet = false;
    std::string coreLetters;  ///< of the alphabet that the file defines itself
    std::optional<DownloadedMotif> motif;
    std::string title;   ///< name in the last title of a matrix
    std::string reason;  ///< of refusing the motif
    bool hasMatrix = false;
    bool isInMatrix = false;
    bool hasLogOdds = false;
    std::optional<std::string> width;  ///< as stated
};

/// The value behind "NAME=" in the line of the matrix.
std::optional<std::string> statedValue(std::string_view line, std::string_view name) {
    for (std::size_t at = line.find(name); at != std::string_view::npos; at = line.find(name, at + 1)) {
        const bool isWord = at > 0 && (line[at - 1] == ' ' || line[at - 1] == '\t' || line[at - 1] == ':');
        const std::string_view rest = trimmed(line.substr(at + name.size()));
        if (!isWord || !rest.starts_with('=')) continue;
        const Row words = splitTokens(rest.substr(1));
        if (!words.empty()) return std::string(words[0]);
    }
    return std::nullopt;
}

void close(Report& report, Download& found) {
    if (report.motif) {
        DownloadedMotif& motif = *report.motif;
        std::string reason = report.alphabet.empty() ? std::move(report.reason) : report.alphabet;
        if (reason.empty() && motif.columns.empty()) {
            reason = report.hasLogOdds ? "no letter-probability matrix, only log-odds" : "no letter-probability matrix";
        }
        if (reason.empty() && report.width && *report.width != std::to_string(motif.columns.size())) {
            reason = std::to_string(motif.columns.size()) + " rows, but w= " + shown(*report.width);
        }
        takeOrRefuse(found, std::move(motif), std::move(reason));
    }
    report.motif.reset();
    report.reason.clear();
    report.width.reset();
    report.hasMatrix = report.isInMatrix = report.hasLogOdds = false;
}

void openMotif(const TextLine& line, Report& report) {
    report.motif.emplace();
    report.motif->line = line.number;
}

/// "MOTIF ID NAME", or in a report "MOTIF ID NAME width = 15 sites = 50".
void readMotifLine(const TextLine& line, const Row& words, Report& report, Download& found) {
    close(report, found);
    openMotif(line, report);
    if (words.size() < 2) {
        report.reason = "a MOTIF line without a name";
        return;
    }
    report.motif->id = words[1];
    const auto width = std::find_if(words.begin() + 2, words.end(), [](std::string_view word) {
        return word == "width" || word.starts_with("width=");
    });
    report.motif->name = joinedWords({words.begin(), width}, 2);
}

void readMatrixLine(const TextLine& line, Report& report, Download& found) {
    if (!report.motif || report.hasMatrix) {
        close(report, found);
        openMotif(line, report);
        const Row words = splitTokens(report.title);
        if (!words.empty()) report.motif->id = words[0];
        report.motif->name = joinedWords(words, 1);
        report.title.clear();
    }
    report.hasMatrix = report.isInMatrix = true;
    report.width = statedValue(line.text, "w");
    if (const auto count = statedValue(line.text, "nsites")) report.motif->siteCount = *count;
    const auto letters = statedValue(line.text, "alength");
    if (letters && *letters != "4" && report.reason.empty()) {
        report.reason = "an alphabet of " + shown(*letters) + " letters, not A, C, G and T";
    }
}

/// Whether the line ends the matrix: anything that is no row of numbers does, empty lines excepted.
bool endsMatrix(const Row& words, const Report& report) {
    if (report.width && *report.width == std::to_string(report.motif->columns.size()) && words.size() != 4) return true;
    return !looksLikeNumber(words[0]) &&
           (words.size() != 4 || std::none_of(words.begin(), words.end(), looksLikeNumber));
}

void readRow(const TextLine& line, const Row& words, Report& report) {
    if (endsMatrix(words, report)) {
        report.isInMatrix = false;
    } else if (report.reason.empty()) {
        report.reason = appendPosition(line, words, usualOrder, report.motif->columns);
    }
}

/// The letters of one alphabet, sorted.
bool isNucleotideAlphabet(std::string letters) {
    std::sort(letters.begin(), letters.end());
    letters.erase(std::unique(letters.begin(), letters.end()), letters.end());
    return letters == "ACGT" || letters == "ACGU";
}

std::string otherAlphabet(std::string_view line) {
    return "the alphabet is not ACGT: \"" + shown(line) + '"';
}

/// "ALPHABET= ACGT", or the begin of a definition that ends with "END ALPHABET".
void readAlphabetLine(std::string_view line, Report& report) {
    const std::size_t equals = line.find('=');
    if (equals != std::string_view::npos) {
        const std::string_view letters = trimmed(line.substr(equals + 1));
        if (letters != "ACGT" && letters != "ACGU") report.alphabet = otherAlphabet(line);
        return;
    }
    if (lowered(line).find("protein") != std::string::npos) {
        report.alphabet = otherAlphabet(line);
    }
    report.isInAlphabet = true;
    report.coreLetters.clear();
}

/// A line of a definition: a letter, or two complementary ones with "~" between them. Letters for several others, which
/// have "=", do not count.
void readAlphabetLetters(std::string_view line, Report& report) {
    if (line.starts_with("END ALPHABET")) {
        report.isInAlphabet = false;
        if (!report.coreLetters.empty() && !isNucleotideAlphabet(report.coreLetters) && report.alphabet.empty()) {
            report.alphabet = otherAlphabet(report.coreLetters);
        }
        return;
    }
    if (line.empty() || line.find('=') != std::string_view::npos) return;
    report.coreLetters += line[0];
    if (const std::size_t other = line.find('~'); other != std::string_view::npos) {
        const std::string_view rest = trimmed(line.substr(other + 1));
        if (!rest.empty()) report.coreLetters += rest[0];
    }
}

/// The name in "Motif NAME position-specific probability matrix"; empty for other lines.
std::string_view titledName(std::string_view line) {
    constexpr std::string_view begin = "Motif ";
    constexpr std::string_view end = "position-specific probability matrix";
    if (!line.starts_with(begin) || !line.ends_with(end)) return {};
    line.remove_prefix(begin.size());
    return line.size() < end.size() ? std::string_view() : trimmed(line.substr(0, line.size() - end.size()));
}

/// Lines outside matrices and definitions.
void readOtherLine(const TextLine& line, Report& report) {
    if (const std::string_view name = titledName(line.text); !name.empty()) report.title = name;
    if (line.text.starts_with("log-odds matrix")) report.hasLogOdds = true;
}

}  // namespace

void readMeme(const Lines& lines, Download& found) {
    Report report;
    for (const TextLine& line : lines) {
        if (isComment(line.text)) continue;
        const Row words = splitTokens(line.text);
        const bool isMotif = !words.empty() && words[0] == "MOTIF";
        if (isMotif) {
            report.isInAlphabet = false;
            readMotifLine(line, words, report, found);
        } else if (line.text.starts_with(matrixLabel)) {
            readMatrixLine(line, report, found);
        } else if (line.text.starts_with("ALPHABET")) {
            readAlphabetLine(line.text, report);
        } else if (report.isInAlphabet) {
            readAlphabetLetters(line.text, report);
        } else if (report.isInMatrix && !words.empty()) {
            readRow(line, words, report);
        }
        if (!report.isInMatrix) readOtherLine(line, report);
    }
    close(report, found);
    if (found.motifs.empty() && found.refused.empty() && !report.alphabet.empty()) {
        found.refused.push_back({"", 1, report.alphabet});
    }
}

}  // namespace varnolix::job
