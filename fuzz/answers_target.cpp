#include <array>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <streambuf>
#include <string>

#include "fuzz/targets.h"
#include "plain/plain_blocks.h"
#include "report/page/html_text.h"
#include "run/checks.h"
#include "run/output_names.h"
#include "run/runDialogue.h"
#include "run/shared_records.h"
#include "run/system/outside_text.h"
#include "tree/distance_table.h"

namespace varnolix::fuzz {

namespace {

bool hasOnly(std::string_view text, std::string_view letters) {
    for (const char c : text) {
        if (letters.find(c) == std::string_view::npos) return false;
    }
    return true;
}

void checkAnswerChecks(std::string_view text) {
    const int length = static_cast<int>(text.size());
    require(checkNumeric(text) == plain::isNumber(text, 0, length), "numeric: digits and points only");
    require(checkDouble(text) == plain::isNumber(text, 1, 1), "double: digits and exactly one point");
    require(checkNumThreads(text) == hasOnly(text, "123456789"), "threads: digits from 1 to 9 only");
    require(checkSpace(text) == (text.find(' ') == std::string_view::npos), "space: no blank");
    require(checkIUPAC(text) == hasOnly(text, "-ABCDGHKMNRSTVWY"), "IUPAC: its letters only");
    require(checkNucleotide(text) == hasOnly(text, "-ACGT"), "nucleotide: its letters only");
}

/// The word that a shell reads from a text of plain characters and single quotes. Nothing if it would read anything
/// else.
std::optional<std::string> wordOfShell(std::string_view text) {
    constexpr std::string_view special = " \t\n|&;<>()$`\"*?[]#~{}!\\";
    std::string word;
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '\'') {
            quoted = !quoted;
        } else if (quoted || special.find(c) == std::string_view::npos) {
            word += c;
        } else if (c == '\\' && at + 1 < text.size()) {
            word += text[++at];
        } else {
            return std::nullopt;
        }
    }
    if (quoted || text.empty()) return std::nullopt;
    return word;
}

/// What PHP and R read from a text in single quotes. Nothing if the text would end the quotes.
std::optional<std::string> unquoted(std::string_view text) {
    std::string content;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\'') return std::nullopt;
        if (text[at] == '\\' && ++at == text.size()) return std::nullopt;
        content += text[at];
    }
    return content;
}

/// The content of a single cell of comma-separated values. Nothing if the text is more than one cell.
std::optional<std::string> onlyCell(std::string_view text) {
    if (text.empty() || text[0] != '"') {
        const bool single = text.find_first_of(",\n\r") == std::string_view::npos;
        return single ? std::optional<std::string>(text) : std::nullopt;
    }
    std::string content;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '"') {
            if (at + 1 == text.size()) return content;
            if (text[++at] != '"') return std::nullopt;
        }
        content += text[at];
    }
    return std::nullopt;
}

/// The text that a browser shows. Nothing if it would find markup.
std::optional<std::string> shownText(std::string_view text) {
    constexpr std::pair<std::string_view, char> entities[] = {
        {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&#39;", '\''}};
    std::string shown;
    while (!text.empty()) {
        std::size_t length = 1;
        char letter = text[0];
        for (const auto& [entity, meaning] : entities) {
            if (!text.starts_with(entity)) continue;
            length = entity.size();
            letter = meaning;
        }
        if (length == 1 && std::string_view("&<>\"'").find(letter) != std::string_view::npos) return std::nullopt;
        shown += letter;
        text.remove_prefix(length);
    }
    return shown;
}

void checkCarriedTexts(const std::string& text) {
    // A relative path that begins with "-" gets a prefix, so that no tool takes it for an option.
    const std::string path = text.starts_with('-') ? "./" + text : text;
    require(text.empty() || wordOfShell(shellWord(text)) == path, "a shell takes the word as the path");
    require(unquoted(insideQuotes(text)) == path, "a script reads the text as the path");
    require(onlyCell(csvCell(text)) == text, "a table reads the cell as it was");
    require(shownText(escapeHTML(text)) == text, "a page shows the text as it was");
}

void checkResultFolder(const std::string& text) {
    constexpr std::string_view added = "result/";
    const std::string folder = resultFolder(text);
    require(folder.ends_with(added), "results go to a folder of that name");
    const std::string kept = folder.substr(0, folder.size() - added.size());
    require(kept.size() == (text.size() < 7 ? text.size() : text.size() - 7), "the last seven characters are dropped");
    require(text.starts_with(kept), "the result folder stands beside the input folder");
}

/// The answers of the input, followed by valid ones for every question, repeated. Aborts a dialogue that never ends.
class Answers : public std::streambuf {
  public:
    explicit Answers(std::string text) : text_(std::move(text)) { setg(text_.data(), text_.data(), end()); }

    struct Endless {};

  private:
    static constexpr int mostRounds = 50;

    int_type underflow() override {
        if (++rounds_ > mostRounds) throw Endless();
        text_ = "\n1\n0.5\nY\nAll\n/\n";
        setg(text_.data(), text_.data(), end());
        return traits_type::to_int_type(text_[0]);
    }
    char* end() { return text_.data() + text_.size(); }

    std::string text_;
    int rounds_ = 0;
};

/// Discards all output.
class Silence : public std::streambuf {
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

/// Makes the console read the given answers and discard all output during its lifetime.
class QuietConsole {
  public:
    explicit QuietConsole(std::string text)
        : answers_(std::move(text)), in_(std::cin.rdbuf(&answers_)), out_(std::cout.rdbuf(&silence_)) {
        std::cin.exceptions(std::ios::badbit);
    }
    ~QuietConsole() {
        std::cin.exceptions(std::ios::goodbit);
        std::cin.rdbuf(in_);
        std::cin.clear();
        std::cout.rdbuf(out_);
    }
    QuietConsole(const QuietConsole&) = delete;
    QuietConsole& operator=(const QuietConsole&) = delete;

  private:
    Answers answers_;
    Silence silence_;
    std::streambuf* in_;
    std::streambuf* out_;
};

bool isIn(int number, int least, int most) {
    return number >= least && number <= most;
}

template <class Choices>
bool isOneOf(const std::string& text, const Choices& choices) {
    for (const char* choice : choices) {
        if (text == choice) return true;
    }
    return false;
}

void checkSettings() {
    require(numFile >= 1 && FileNameType.size() == static_cast<std::size_t>(numFile), "every file is asked for");
    require(isIn(numTopMotif, 1, 50) && isIn(numBestMatches, 1, 50), "listed numbers lie from 1 to 50");
    require(isIn(numThread, 1, maxThreadsAvailable), "there are no more threads than the machine has");
    const double cutoff = std::strtod(simCutoffInput.c_str(), nullptr);
    require(simCutoff == cutoff && simCutoff >= 0.5 && simCutoff <= 0.9, "the cutoff is the one typed");
    for (const fileNameAndType& file : FileNameType) {
        require(isIn(file.fileFormat, 1, 10) && file.fileName.find(' ') == std::string::npos, "files are well named");
    }
    const std::array yesNo = {"Y", "N"};
    require(isOneOf(motifCluster, yesNo) && isOneOf(combinedMotifFlag, yesNo), "questions are answered Y or N");
    require(isOneOf(outputFileType, std::array{"Global-Only", "All"}), "the type is one of two");
    require(isOneOf(outputFileFormat, std::array{"Text", "HTML", "PDF", "All"}), "the format is one of four");
    require(!DBName.empty(), "a collection or none is chosen");
    require(outputPath == resultFolder(inputPath), "results go beside the input");
    require(outputFileLocation == outputPath + jobID + "Results.txt", "names begin with the job");
}

/// Restores the output names, to which a dialogue adds the job as a prefix, to their start values.
class NamesKept {
  public:
    ~NamesKept() {
        for (std::size_t name = 0; name < std::size(names_); ++name) *names_[name] = start_[name];
    }

  private:
    std::array<std::string*, 15> names_ = {&outputFile,
                                           &outputFileWithoutMotif,
                                           &outputGlobalMatchingFile,
                                           &outputHTMLFile,
                                           &outputHTMLGlobalMatchingFile,
                                           &outputDatabaseMatchingFile,
                                           &outputDatabaseMatchingFileWithoutMotif,
                                           &outputDatabaseMatchingHTMLFile,
                                           &outputDatabaseMatchingGlobalMatchingFile,
                                           &outputDatabaseMatchingGlobalMatchingHTMLFile,
                                           &outputCombinedMatrixGlobalFile,
                                           &outputCombinedMatrixGlobalAndLocalFile,
                                           &outputCombinedMatrixBestMatchesFile,
                                           &outputPhylogeneticTreeHTMLFile,
                                           &outputPhylogeneticTreeGlobalHTMLFile};
    std::array<std::string, 15> start_ = [this] {
        std::array<std::string, 15> texts;
        for (std::size_t name = 0; name < std::size(names_); ++name) texts[name] = *names_[name];
        return texts;
    }();
};

void checkDialogue(const std::string& text) {
    const NamesKept names;
    FileNameType.clear();
    try {
        const QuietConsole console(text);
        runDialogue();
    } catch (const Answers::Endless&) {
        require(numFile > 1, "good answers end the dialogue unless many files are asked for");
        return;
    }
    checkSettings();
}

}  // namespace

void answersTarget(std::string_view text) {
    const std::string copy(text);
    checkAnswerChecks(text);
    checkCarriedTexts(copy);
    checkResultFolder(copy);
    checkDialogue(copy);
}

}  // namespace varnolix::fuzz
