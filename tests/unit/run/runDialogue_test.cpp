#include "run/runDialogue.h"

#include <gmock/gmock.h>
#include <omp.h>

#include <vector>

#include "support/console.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using testing::Console;
using ::testing::HasSubstr;
using ::testing::Not;

/// The answers for a run with one file, one line each, so that a test can change a single one.
enum Answer {
    files,
    topMotifs,
    bestMatches,
    cutoff,
    threads,
    inputFolder,
    fileName,
    fileFormat,
    collection,
    tree,
    combine,
    type,
    format,
    outputFolder
};

class RunDialogueTest : public testing::FolderTest {
  protected:
    RunDialogueTest()
        : answers_{"1",  "10", "5", "0.75", "1",   "/a/motifs/", "file.txt",
                   "10", "14", "N", "N",    "All", "Text",       folder()} {}

    /// Answers the question with these texts in turn, each on a line of its own.
    void answer(Answer question, const std::string& lines) { answers_[question] = lines; }

    /// Runs the dialogue and returns what it printed.
    std::string run() const {
        std::string input;
        for (const std::string& each : answers_) input += each + "\n";
        const Console console(input);
        runDialogue();
        return console.output();
    }

  private:
    std::vector<std::string> answers_;
};

int countOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

const std::string invalid = "Invalid input. Please, re-enter.\n";

TEST_F(RunDialogueTest, AsksEverythingInOrder) {
    const std::string threadLines =
        "Maximum number of threads available on your machine is " + std::to_string(threadsBefore_) +
        ".\nThis is the maximum number of threads can be allocated to run this program.\n\n";
    EXPECT_EQ(run(),
              "Please, enter number of files to read (must be > 0):\n"
              "Please, enter number of top significant motifs (must be > 0 and <= 50):\n"
              "Please, enter number of best matches (must be > 0 and <= 50):\n"
              "Please, select a cutoff for similarity (>= 0.5, >= 0.6, >= 0.7, >= 0.75, >= 0.8, >= 0.85, >= 0.9):\n"
              "Please, enter number of threads (must be >= 1):\n" +
                  threadLines +
                  "Please, enter input file's location (full path, for example, C:\\MyDocuments\\ for Windows and "
                  "/home/MyFolder/ for Linux):\n"
                  "\n"
                  "Enter input file names and formats (for example: 1). See the user manual for each format:\n"
                  "\n"
                  "(1) TRANSFAC\n"
                  "(2) TRANSFAC-like\n"
                  "(3) PSSM\n"
                  "(4) Jaspar\n"
                  "(5) MEME output\n"
                  "(6) Consensus sequence\n"
                  "(7) Sequence Alignment\n"
                  "(8) Matrices (Horizonal)\n"
                  "(9) Matrices (Vertical)\n"
                  "(10) Unspecified\n"
                  "\n"
                  "Please, enter file name (in text format .txt, name without spaces):\n"
                  "Please, enter file format:\n"
                  "\n"
                  "Enter database name by selecting a number in the list below:\n"
                  "\n"
                  "(1) Jaspar 2016 (All)\n"
                  "(2) Jaspar 2016 (Fungi)\n"
                  "(3) Jaspar 2016 (Insects)\n"
                  "(4) Jaspar 2016 (Nematodes)\n"
                  "(5) Jaspar 2016 (Plants)\n"
                  "(6) Jaspar 2016 (Urochordates)\n"
                  "(7) Jaspar 2016 (Vertebrates)\n"
                  "(8) Transfac (Free version)\n"
                  "(9) UniPROBE (Human)\n"
                  "(10) UniPROBE (Mouse)\n"
                  "(11) UniPROBE (Parasite)\n"
                  "(12) UniPROBE (Worm)\n"
                  "(13) UniPROBE (Yeast)\n"
                  "(14) None\n"
                  "\n"
                  "Would you like to generate phylogenetic tree? (Y or N):\n"
                  "Would you like to combine similar motifs? (Y or N):\n"
                  "Please, enter an output file type (Global-Only, All):\n"
                  "Please, enter an output file format (Text, HTML, PDF, All):\n"
                  "please, enter output file's location (full path, for example, C:\\MyDocuments\\ for Windows and "
                  "/home/MyFolder/ for Linux):\n");
}

TEST_F(RunDialogueTest, StoresTextsAndValues) {
    answer(files, "2");
    answer(fileName, "a.txt\n4");
    answer(fileFormat, "b.txt\n10");
    answer(cutoff, "0.850");
    answer(collection, "8");
    answer(tree, "Y");
    answer(type, "Global-Only");
    answer(format, "PDF");
    run();
    EXPECT_EQ(numFileInput, "2");
    EXPECT_EQ(numFile, 2);
    EXPECT_EQ(numTopMotifInput, "10");
    EXPECT_EQ(numTopMotif, 10);
    EXPECT_EQ(numBestMatchesInput, "5");
    EXPECT_EQ(numBestMatches, 5);
    EXPECT_EQ(simCutoffInput, "0.850");
    EXPECT_EQ(simCutoff, 0.85);
    EXPECT_EQ(numThreadInput, "1");
    EXPECT_EQ(numThread, 1);
    EXPECT_EQ(omp_get_max_threads(), 1);
    EXPECT_EQ(inputPath, "/a/motifs/");
    EXPECT_EQ(DBNameInput, "8");
    EXPECT_EQ(DBName, "transfac");
    EXPECT_EQ(motifCluster, "Y");
    EXPECT_EQ(combinedMotifFlag, "N");
    EXPECT_EQ(outputFileType, "Global-Only");
    EXPECT_EQ(outputFileFormat, "PDF");
    ASSERT_EQ(FileNameType.size(), 2U);
    EXPECT_EQ(FileNameType[0].fileName, "a.txt");
    EXPECT_EQ(FileNameType[0].fileFormat, 4);
    EXPECT_EQ(FileNameType[0].datasetNum, 1);
    EXPECT_EQ(FileNameType[0].motifCount, 0);
    EXPECT_EQ(FileNameType[1].fileName, "b.txt");
    EXPECT_EQ(FileNameType[1].fileFormat, 10);
    EXPECT_EQ(FileNameType[1].datasetNum, 2);
}

TEST_F(RunDialogueTest, ResultsGoNextToTheInputWhateverFolderWasTyped) {
    run();
    EXPECT_EQ(outputPath, "/a/result/");
    EXPECT_EQ(jobID.substr(0, 2), "J_");
    EXPECT_EQ(outputFileLocation, "/a/result/" + jobID + "Results.txt");
    EXPECT_EQ(outputPhylogeneticTreeGlobalHTMLFileLocation,
              "/a/result/" + jobID + "Global_Matching_Phylogenetic_Tree.html");
}

struct BadAnswer {
    Answer question;
    std::vector<std::string> bad;
    std::string good;
    std::string message;
};

TEST_F(RunDialogueTest, RefusesEveryKindOfBadAnswer) {
    write("file.txt", "");
    const std::vector<BadAnswer> cases = {
        {files, {"0", "x", "-1", "0.9", "."}, "1", invalid},
        {topMotifs, {"0", "51", "-3", "ten", "1,5", "999999999999999999999"}, "50", invalid},
        {bestMatches, {"0", "51", "5x"}, "1", invalid},
        {cutoff, {"0.65", "1", "0", "75", "0.5.0", ">=0.5", "0.95", "0.7500001"}, "0.6", invalid},
        {threads, {"0", "10", "-1", "a", "1.0", "20"}, "1", invalid},
        {fileName, {"a b.txt", " ", "a.txt "}, "a.txt", "Please, re-enter file name without spaces:\n"},
        {fileFormat, {"0", "11", "", "x", "-1", " 4"}, "3", "Invalid file format. Please, re-enter:\n"},
        {collection, {"0", "15", "01", "3.0", "N", "None", "+3", "014"}, "13", invalid},
        {tree, {"y", "Yes", "", "n", " Y", "Y ", "No"}, "Y", invalid},
        {combine, {"y", "Yes", "", "NN"}, "N", invalid},
        {type, {"all", "Global", "", "global-only", "All "}, "All", "Invalid output file type. Please, re-enter.\n"},
        {format,
         {"text", "TEXT", "html", "", "Html", "PDF "},
         "HTML",
         "Invalid output file format. Please, re-enter.\n"},
        {outputFolder, {"/no/such/folder", "", folder() + "file.txt"}, folder(), "Invalid path. Please, re-enter.\n"},
    };
    for (const BadAnswer& each : cases) {
        testing::resetGlobals();
        std::string lines;
        for (const std::string& bad : each.bad) lines += bad + "\n";
        answer(each.question, lines + each.good);
        const std::string output = run();
        EXPECT_EQ(countOf(output, each.message), static_cast<int>(each.bad.size())) << lines;
        answer(each.question, each.good);
    }
}

TEST_F(RunDialogueTest, QuestionIsNotRepeatedAfterABadAnswer) {
    answer(topMotifs, "0\n51\n7");
    const std::string output = run();
    EXPECT_EQ(countOf(output, "number of top significant motifs"), 1);
    EXPECT_THAT(output,
                HasSubstr("(must be > 0 and <= 50):\n" + invalid + invalid + "Please, enter number of best matches"));
    EXPECT_EQ(numTopMotif, 7);
}

TEST_F(RunDialogueTest, OnlyTheFormatIsReadAgain) {
    answer(fileFormat, "99\n2");
    const std::string output = run();
    EXPECT_EQ(countOf(output, "Please, enter file name"), 1);
    ASSERT_EQ(FileNameType.size(), 1U);
    EXPECT_EQ(FileNameType[0].fileName, "file.txt");
    EXPECT_EQ(FileNameType[0].fileFormat, 2);
}

TEST_F(RunDialogueTest, TakesCutoffsInAnySpelling) {
    struct Spelling {
        const char* text;
        double value;
    };
    for (const Spelling& each : {Spelling{"0.5", 0.5},
                                 {".5", 0.5},
                                 {"0.50", 0.5},
                                 {"0.6", 0.6},
                                 {"00.7", 0.7},
                                 {"0.75", 0.75},
                                 {"0.750", 0.75},
                                 {"0.8", 0.8},
                                 {".85", 0.85},
                                 {"0.9", 0.9}}) {
        testing::resetGlobals();
        answer(cutoff, each.text);
        EXPECT_THAT(run(), Not(HasSubstr(invalid))) << each.text;
        EXPECT_EQ(simCutoff, each.value) << each.text;
    }
}

TEST_F(RunDialogueTest, CountsTakeTheWholePartOfDecimals) {
    answer(topMotifs, "3.7");
    answer(bestMatches, "50.99");
    EXPECT_THAT(run(), Not(HasSubstr(invalid)));
    EXPECT_EQ(numTopMotifInput, "3.7");
    EXPECT_EQ(numTopMotif, 3);
    EXPECT_EQ(numBestMatches, 50);
}

TEST_F(RunDialogueTest, ThreadsAreCappedSilently) {
    omp_set_num_threads(4);
    answer(threads, "8");
    const std::string output = run();
    EXPECT_THAT(output, HasSubstr("Maximum number of threads available on your machine is 4.\n"));
    EXPECT_THAT(output, Not(HasSubstr(invalid)));
    EXPECT_EQ(numThreadInput, "8");
    EXPECT_EQ(numThread, 4);
    EXPECT_EQ(maxThreadsAvailable, 4);
    EXPECT_EQ(omp_get_max_threads(), 4);
}

TEST_F(RunDialogueTest, FewerThreadsThanAvailableAreKept) {
    omp_set_num_threads(4);
    answer(threads, "3");
    run();
    EXPECT_EQ(numThread, 3);
    EXPECT_EQ(omp_get_max_threads(), 3);
}

TEST_F(RunDialogueTest, HugeThreadCountIsCapped) {
    answer(threads, "99999999999999999999999");
    run();
    EXPECT_EQ(numThread, threadsBefore_);
}

TEST_F(RunDialogueTest, WordAnswersMayShareALine) {
    // One character is dropped after the number of files, and one after the number of threads.
    const Console console("1 10 5 0.75 1\n/a/motifs/\nfile.txt\n10\n14\nN\nN\nAll\nText\n" + folder() + "\n");
    runDialogue();
    EXPECT_EQ(numTopMotif, 10);
    EXPECT_EQ(numBestMatches, 5);
    EXPECT_EQ(simCutoff, 0.75);
    EXPECT_EQ(inputPath, "/a/motifs/");
    EXPECT_EQ(outputFileFormat, "Text");
}

TEST_F(RunDialogueTest, RestOfALineAfterAWordIsTheNextAnswer) {
    // One blank is dropped after the number of threads, so the path may follow on the same line. The same is true after
    // the collection.
    const Console console("1\n10\n5\n0.75\n1 /a/motifs/\nfile.txt\n10\n14 N\nN\nAll\nText\n" + folder() + "\n");
    runDialogue();
    EXPECT_EQ(inputPath, "/a/motifs/");
    EXPECT_EQ(motifCluster, "N");
    EXPECT_EQ(outputFileType, "All");
}

TEST_F(RunDialogueTest, EveryBadWordOnALineIsASeparateAnswer) {
    answer(topMotifs, "0 51 50");
    const std::string output = run();
    EXPECT_EQ(countOf(output, invalid), 2);
    EXPECT_EQ(numTopMotif, 50);
}

TEST_F(RunDialogueTest, CharacterAfterFileCountIsDropped) {
    // Only the character after a valid answer is dropped, so "1 2" is read as 1 and then 2.
    answer(files, "1 2");
    answer(topMotifs, "3");
    answer(bestMatches, "0.8");
    answer(cutoff, "1");
    answer(threads, "/b/motifs/");
    answer(inputFolder, "file.txt");
    answer(fileName, "4");
    answer(fileFormat, "14");
    answer(collection, "N");
    answer(tree, "N");
    answer(combine, "All");
    answer(type, "Text");
    answer(format, folder());
    const std::string output = run();
    EXPECT_THAT(output, Not(HasSubstr(invalid)));
    EXPECT_EQ(numFile, 1);
    EXPECT_EQ(numTopMotif, 2);
    EXPECT_EQ(numBestMatches, 3);
    EXPECT_EQ(inputPath, "/b/motifs/");
}

TEST_F(RunDialogueTest, InputPathIsTakenUntested) {
    for (const char* path : {"", "no such folder with blanks", "/x"}) {
        testing::resetGlobals();
        answer(inputFolder, path);
        run();
        EXPECT_EQ(inputPath, path);
    }
}

TEST_F(RunDialogueTest, EmptyFileNamePasses) {
    answer(fileName, "");
    run();
    ASSERT_EQ(FileNameType.size(), 1U);
    EXPECT_EQ(FileNameType[0].fileName, "");
}

TEST_F(RunDialogueTest, EveryCollectionHasItsName) {
    const char* names[] = {"jasparAll",         "jasparFungi",
                           "jasparInsects",     "jasparNematodes",
                           "jasparPlants",      "jasparUrochordates",
                           "jasparVertebrates", "transfac",
                           "uniprobeHuman",     "uniprobeMouse",
                           "uniprobeParasite",  "uniprobeWorm",
                           "uniprobeYeast",     "N"};
    int number = 1;
    for (const char* name : names) {
        testing::resetGlobals();
        answer(collection, std::to_string(number++));
        run();
        EXPECT_EQ(DBName, name);
    }
}

TEST_F(RunDialogueTest, OutputFolderMayHoldBlanks) {
    const std::string blanks = folder() + "two words";
    std::filesystem::create_directory(blanks);
    answer(outputFolder, blanks);
    EXPECT_THAT(run(), Not(HasSubstr("Invalid path")));
}

}  // namespace
}  // namespace varnolix
