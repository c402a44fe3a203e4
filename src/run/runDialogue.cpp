#include "run/runDialogue.h"

#include <omp.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <optional>
#include <string_view>

#include "run/checks.h"
#include "run/collections.h"
#include "run/output_names.h"
#include "run/shared_records.h"
#include "run/system/output_file.h"

// The dialogue. After an invalid answer it prints one line, clears the error state of the console and reads again, with
// no limit on the number of attempts. At the end of the input this repeats for ever, so a file of answers has to be
// complete.

namespace varnolix {

namespace {

constexpr const char* invalidInput = "Invalid input. Please, re-enter.";
constexpr int mostListed = 50;

enum class Read { word, line };

/// Prints the question and reads into `answer` until it is accepted. Reading a word at the end of the input leaves the
/// previous text in place.
void ask(std::string_view question, Read read, std::string& answer, const std::function<bool(const std::string&)>& good,
         const char* badAnswer = invalidInput) {
    std::cout << question << '\n';
    while (true) {
        checkConsole();
        if (read == Read::word) {
            std::cin >> answer;
        } else {
            std::getline(std::cin, answer);
        }
        if (good(answer)) return;
        std::cout << badAnswer << '\n';
        std::cin.clear();
    }
}

std::optional<int> wholeNumber(const std::string& text, int least, int most) {
    if (!checkNumeric(text)) return std::nullopt;
    const long value = std::strtol(text.c_str(), nullptr, 10);
    if (value < least || value > most) return std::nullopt;
    return static_cast<int>(value);
}

/// Accepts digits and points. Stores the whole part if it lies in the range.
std::function<bool(const std::string&)> wholeNumberInto(int& value, int least, int most) {
    return [&value, least, most](const std::string& text) {
        const std::optional<int> number = wholeNumber(text, least, most);
        if (number) value = *number;
        return number.has_value();
    };
}

bool cutoffIntoSetting(const std::string& text) {
    if (!checkDouble(text)) return false;
    const double value = std::strtod(text.c_str(), nullptr);
    constexpr double cutoffs[] = {0.5, 0.6, 0.7, 0.75, 0.8, 0.85, 0.9};
    if (std::find(std::begin(cutoffs), std::end(cutoffs), value) == std::end(cutoffs)) return false;
    simCutoff = value;
    return true;
}

std::function<bool(const std::string&)> oneOf(std::initializer_list<std::string_view> choices) {
    return [choices = std::vector<std::string_view>(choices)](const std::string& text) {
        return std::find(choices.begin(), choices.end(), text) != choices.end();
    };
}

void setThreads() {
    maxThreadsAvailable = omp_get_max_threads();
    const long wanted = std::strtol(numThreadInput.c_str(), nullptr, 10);
    std::cout << "Maximum number of threads available on your machine is " << maxThreadsAvailable << ".\n"
              << "This is the maximum number of threads can be allocated to run this program.\n\n";
    numThread = static_cast<int>(std::clamp<long>(wanted, 1, maxThreadsAvailable));
    omp_set_num_threads(numThread);
}

void askSettings() {
    ask("Please, enter number of files to read (must be > 0):", Read::word, numFileInput,
        wholeNumberInto(numFile, 1, INT_MAX));
    std::cin.ignore();
    ask("Please, enter number of top significant motifs (must be > 0 and <= 50):", Read::word, numTopMotifInput,
        wholeNumberInto(numTopMotif, 1, mostListed));
    ask("Please, enter number of best matches (must be > 0 and <= 50):", Read::word, numBestMatchesInput,
        wholeNumberInto(numBestMatches, 1, mostListed));
    ask("Please, select a cutoff for similarity (>= 0.5, >= 0.6, >= 0.7, >= 0.75, >= 0.8, >= 0.85, >= 0.9):",
        Read::word, simCutoffInput, cutoffIntoSetting);
    ask("Please, enter number of threads (must be >= 1):", Read::word, numThreadInput, checkNumThreads);
    setThreads();
    std::cin.ignore();
}

void askFiles() {
    ask("Please, enter input file's location (full path, for example, C:\\MyDocuments\\ for Windows and "
        "/home/MyFolder/ for Linux):",
        Read::line, inputPath, [](const std::string&) { return true; });
    std::cout << "\nEnter input file names and formats (for example: 1). See the user manual for each format:\n\n"
                 "(1) TRANSFAC\n(2) TRANSFAC-like\n(3) PSSM\n(4) Jaspar\n(5) MEME output\n(6) Consensus sequence\n"
                 "(7) Sequence Alignment\n(8) Matrices (Horizonal)\n(9) Matrices (Vertical)\n(10) Unspecified\n\n";
    constexpr int formatCount = 10;
    for (int file = 1; file <= numFile; ++file) {
        ask("Please, enter file name (in text format .txt, name without spaces):", Read::line, inputFilename,
            checkSpace, "Please, re-enter file name without spaces:");
        ask("Please, enter file format:", Read::line, inputFileFormat,
            wholeNumberInto(inputFileFormatNum, 1, formatCount), "Invalid file format. Please, re-enter:");
        InputFiles.fileName = inputFilename;
        InputFiles.fileFormat = inputFileFormatNum;
        InputFiles.datasetNum = file;
        FileNameType.push_back(InputFiles);
    }
}

/// Sets DBName by its number in the menu, which has to be written exactly as shown there: "01" is refused.
bool collectionIntoSetting(const std::string& text) {
    constexpr int none = static_cast<int>(std::size(collections)) + 1;
    const std::optional<int> number = wholeNumber(text, 1, none);
    if (!number || std::to_string(*number) != text) return false;
    DBName = *number == none ? "N" : collections[*number - 1].name;
    return true;
}

void askCollection() {
    std::cout << '\n';
    std::string menu = "Enter database name by selecting a number in the list below:\n\n";
    int number = 1;
    for (const Collection& collection : collections) {
        menu += "(" + std::to_string(number++) + ") " + std::string(collection.menuText) + "\n";
    }
    menu += "(" + std::to_string(number) + ") None\n";
    ask(menu, Read::word, DBNameInput, collectionIntoSetting);
    std::cin.ignore();
}

void askOutput() {
    ask("Would you like to generate phylogenetic tree? (Y or N):", Read::line, motifCluster, oneOf({"Y", "N"}));
    ask("Would you like to combine similar motifs? (Y or N):", Read::line, combinedMotifFlag, oneOf({"Y", "N"}));
    ask("Please, enter an output file type (Global-Only, All):", Read::line, outputFileType,
        oneOf({"Global-Only", "All"}), "Invalid output file type. Please, re-enter.");
    ask("Please, enter an output file format (Text, HTML, PDF, All):", Read::line, outputFileFormat,
        oneOf({"Text", "HTML", "PDF", "All"}), "Invalid output file format. Please, re-enter.");
    ask(
        "please, enter output file's location (full path, for example, C:\\MyDocuments\\ for Windows and "
        "/home/MyFolder/ for Linux):",
        Read::line, outputPath, [](const std::string& path) { return isValidPath(path.c_str()); },
        "Invalid path. Please, re-enter.");
}

}  // namespace

void runDialogue() {
    askSettings();
    askFiles();
    askCollection();
    askOutput();
    identifyJob();
}

}  // namespace varnolix
