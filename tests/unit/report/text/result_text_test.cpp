#include "report/text/result_text.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include "report/stages.h"
#include "report/text/text_frame.h"
#include "run/output_names.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing::times;

using Records = std::vector<dataCombinedScore>;

/// Pads each text to its width.
std::string row(std::initializer_list<std::pair<std::string, std::size_t>> cells) {
    std::string line;
    for (const auto& [text, width] : cells) line += text + std::string(width - std::min(width, text.size()), ' ');
    return line + "\n";
}

class ResultTextTest : public testing::FolderTest {
  protected:
    ResultTextTest() {
        outputPath = folder();
        nameOutputFiles();
        motifNameLength = 6;
        Datasets = {testing::motifOfText(1, "AACC", 1, "first"), testing::motifOfText(2, "TAACC", 2, "second"),
                    testing::motifOfText(3, "CCGG", 2, "third")};
        DatabaseDatasets = {testing::motifOfText(1, "GGGG", 1, "Ref one"),
                            testing::motifOfText(2, "AACC", 1, "Ref two")};
        DatabaseDatasets[0].motifID = "MA0001.1";
        DatabaseDatasets[1].motifID = "MA0002.1";
        DatabaseDatasets[1].taxon = "Homo sapiens";
    }

    static dataCombinedScore record(int first, int second, double score) {
        dataCombinedScore made{};
        made.matrixID1 = first;
        made.matrixID2 = second;
        made.position = 2;
        made.overlap = 4;
        made.combinedScore = score;
        made.similarityScore = 99;  // must not be printed
        made.primaryFlag = PrimaryFlag::yes;
        made.matchingFormat2 = MatchingFormat::reverseComplement;
        return made;
    }

    static std::string head() {
        return row({{"Dataset #", 15},
                    {"Motif ID", 15},
                    {"Motif name", 16},
                    {"Matching format of first motif", 40},
                    {"Matching format of second motif", 40},
                    {"Direction", 15},
                    {"Position #", 15},
                    {"# of overlap", 15},
                    {"Similarity score", 15}});
    }

    static std::string line(const char* dataset, const char* id, const char* name, const char* score) {
        return row({{dataset, 15},
                    {id, 15},
                    {name, 16},
                    {"Original Motif", 40},
                    {"Reverse Complement", 40},
                    {"Forward", 15},
                    {"2", 15},
                    {"4", 15},
                    {score, 15}});
    }

    static std::string secondMatrices() {
        return "Original motif\n"
               "0.000000    0.000000    0.000000    1.000000    \n"
               "1.000000    0.000000    0.000000    0.000000    \n"
               "1.000000    0.000000    0.000000    0.000000    \n"
               "0.000000    1.000000    0.000000    0.000000    \n"
               "0.000000    1.000000    0.000000    0.000000    \n"
               "Consensus sequence: TAACC\n"
               "\n"
               "Reverse complement motif\n"
               "0.000000    0.000000    1.000000    0.000000    \n"
               "0.000000    0.000000    1.000000    0.000000    \n"
               "0.000000    0.000000    0.000000    1.000000    \n"
               "0.000000    0.000000    0.000000    1.000000    \n"
               "1.000000    0.000000    0.000000    0.000000    \n"
               "Consensus sequence: GGTTA\n";
    }

    static std::string hyphens() { return times(196, '-') + "\n"; }
};

TEST_F(ResultTextTest, RecordStandsLineByLine) {
    WriteTopResultsList(Records{record(1, 2, 0.85)}, 3, 1);
    EXPECT_EQ(read("Results.txt"), head() + line("2", "2", "second", "0.85") + "\n" + secondMatrices() +
                                       "\nAlignment:\nGGTTA\n-AACC\n\n" + hyphens());
}

TEST_F(ResultTextTest, BriefRecordHoldsTextsOnly) {
    WriteTopResultsListWithoutMotif(Records{record(1, 2, 0.85)}, 2, 1);
    EXPECT_EQ(read("Results_Without_Motif_Details.txt"), head() + line("2", "2", "second", "0.85") +
                                                             "\nConsensus sequence (original motif): TAACC\n"
                                                             "Consensus sequence (reverse complement motif): GGTTA\n"
                                                             "\nAlignment:\nGGTTA\n-AACC\n\n" +
                                                             hyphens());
}

TEST_F(ResultTextTest, GlobalRecordIsTheSame) {
    WriteTopResultsList(Records{record(1, 2, 0.85), record(1, 3, 0.5)}, 2, 1);
    WriteTopResultsGlobalMatchingList(Records{record(1, 2, 0.85), record(1, 3, 0.5)}, 1);
    EXPECT_EQ(read("Results_Global_Matching.txt"), read("Results.txt"));
}

TEST_F(ResultTextTest, RecordOfSecondMotifShowsTheFirstInUncrossedColumns) {
    WriteTopResultsList(Records{record(2, 1, 0.85)}, 3, 1);
    const std::string text = read("Results.txt");
    EXPECT_THAT(text, HasSubstr(line("2", "2", "second", "0.85")));
    // Both are drawn in the first format, and the own one is moved.
    EXPECT_THAT(text, HasSubstr("\nAlignment:\nTAACC\n-AACC\n\n"));
}

TEST_F(ResultTextTest, FirstScoreIsGeneralAndLaterOnesHaveSixDecimals) {
    WriteTopResultsList(Records{record(1, 2, 0.85), record(1, 3, 0.5)}, 3, 1);
    WriteTopResultsList(Records{record(2, 1, 0.25)}, 3, 2);
    const std::string text = read("Results.txt");
    EXPECT_THAT(text, HasSubstr(line("2", "2", "second", "0.85")));
    EXPECT_THAT(text, HasSubstr(line("2", "3", "third", "0.500000")));
    EXPECT_THAT(text, HasSubstr(line("1", "1", "first", "0.250000")));
}

TEST_F(ResultTextTest, BriefReportStaysGeneral) {
    WriteTopResultsListWithoutMotif(Records{record(1, 2, 0.85), record(1, 3, 1.0 / 3.0)}, 3, 1);
    const std::string text = read("Results_Without_Motif_Details.txt");
    EXPECT_THAT(text, HasSubstr(line("2", "2", "second", "0.85")));
    EXPECT_THAT(text, HasSubstr(line("2", "3", "third", "0.333333")));
    EXPECT_EQ(myfileWithoutMotif.flags() & std::ios_base::floatfield, std::ios_base::fmtflags{});
}

TEST_F(ResultTextTest, ReportsKeepNotationsOfTheirOwn) {
    WriteTopResultsList(Records{record(1, 2, 0.85)}, 3, 1);
    WriteTopResultsGlobalMatchingList(Records{record(1, 2, 0.85)}, 1);
    EXPECT_THAT(read("Results_Global_Matching.txt"), HasSubstr(line("2", "2", "second", "0.85")));
}

TEST_F(ResultTextTest, FooterFollowsTheNotationOfItsReport) {
    wtime = 2.5;
    WriteTopResultsListWithoutMotif(Records{record(1, 2, 0.85)}, 3, 1);
    writeTextFooter(reports::brief);
    EXPECT_THAT(read("Results_Without_Motif_Details.txt"), HasSubstr("Runtime: 2.5 seconds"));
    WriteTopResultsList(Records{record(1, 2, 0.85)}, 3, 1);
    writeTextFooter(reports::full);
    EXPECT_THAT(read("Results.txt"), HasSubstr("Runtime: 2.500000 seconds"));
}

TEST_F(ResultTextTest, MotifWithoutColumnsKeepsTheNotation) {
    Datasets.push_back(testing::motifOfText(4, "", 2, "empty"));
    WriteTopResultsList(Records{record(1, 4, 0.85), record(1, 4, 0.25)}, 3, 1);
    EXPECT_THAT(read("Results.txt"), HasSubstr(line("2", "4", "empty", "0.25")));
}

TEST_F(ResultTextTest, BackwardRecordIsDrawnFromTheRight) {
    dataCombinedScore backward = record(1, 2, 0.85);
    backward.direction = Direction::backward;
    backward.matchingFormat2 = MatchingFormat::originalMotif;
    backward.position = 1;
    WriteTopResultsListWithoutMotif(Records{backward}, 3, 1);
    EXPECT_THAT(read("Results_Without_Motif_Details.txt"), HasSubstr("Alignment:\nTAACC\n-AACC\n\n"));
}

TEST_F(ResultTextTest, NameColumnGrowsWithTheLongestName) {
    motifNameLength = 20;
    WriteTopResultsList(Records{record(1, 2, 0.85)}, 3, 1);
    EXPECT_THAT(read("Results.txt"), HasSubstr("Motif name                    Matching format of first motif"));
}

TEST_F(ResultTextTest, PairsFormShowsBothMotifs) {
    // The record stores the outer motif second. The datasets are in the order of the pair, not of the record.
    dataCombinedScore pair = record(2, 1, 0.85);
    pair.primaryFlag = PrimaryFlag::empty;
    WriteTopResultsListWithoutMotif(Records{pair}, 1, 0);
    const std::string table = row({{"Dataset #", 15},
                                   {"Comparing dataset #", 25},
                                   {"Motif ID in dataset", 25},
                                   {"Motif ID in comparing dataset", 35},
                                   {"Motif name in dataset", 40},
                                   {"Motif name in comparing dataset", 40},
                                   {"Matching format of first motif", 40},
                                   {"Matching format of second motif", 40},
                                   {"Direction", 15},
                                   {"Position #", 15},
                                   {"# of overlap", 15},
                                   {"Similarity score", 15}}) +
                              row({{"1", 15},
                                   {"2", 25},
                                   {"2", 25},
                                   {"1", 35},
                                   {"second", 40},
                                   {"first", 40},
                                   {"Original Motif", 40},
                                   {"Reverse Complement", 40},
                                   {"Forward", 15},
                                   {"2", 15},
                                   {"4", 15},
                                   {"0.85", 15}}) +
                              "\n";
    EXPECT_EQ(read("Results_Without_Motif_Details.txt"), table +
                                                             "Consensus sequence (original motif): TAACC\n"
                                                             "Consensus sequence (reverse complement motif): GGTTA\n" +
                                                             hyphens() +
                                                             "Consensus sequence (original motif): AACC\n"
                                                             "Consensus sequence (reverse complement motif): GGTT\n" +
                                                             hyphens());
    WriteTopResultsList(Records{pair}, 1, 0);
    const std::string full = read("Results.txt");
    EXPECT_EQ(full.substr(0, table.size()), table);
    EXPECT_THAT(full, HasSubstr("\n\nMotif ID 2\t\tMotif name second\n" + secondMatrices() + hyphens() +
                                "Motif ID 1\t\tMotif name first\nOriginal motif\n"));
    EXPECT_EQ(full.substr(full.size() - 197), hyphens());
}

TEST_F(ResultTextTest, OtherModesPrintNothing) {
    const Records list = {record(1, 2, 0.85)};
    for (const auto& [mode, id] : {std::pair{1, 1L}, {2, 0L}, {3, 0L}, {0, 1L}, {4, 1L}, {2, -1L}, {0, 0L}}) {
        WriteTopResultsList(list, mode, id);
        WriteTopResultsListWithoutMotif(list, mode, id);
    }
    EXPECT_EQ(read("Results.txt"), "");
    EXPECT_EQ(read("Results_Without_Motif_Details.txt"), "");
}

TEST_F(ResultTextTest, EmptyListPrintsNothing) {
    WriteTopResultsList({}, 3, 1);
    WriteTopResultsList({}, 1, 0);
    EXPECT_EQ(read("Results.txt"), "");
    EXPECT_FALSE(myfile.is_open());
}

TEST_F(ResultTextTest, ListsAreAppended) {
    write("Results.txt", "header\n");
    WriteTopResultsList(Records{record(1, 2, 0.85)}, 3, 1);
    EXPECT_EQ(read("Results.txt").substr(0, 16), "header\nDataset #");
}

TEST_F(ResultTextTest, CollectionRecordStandsLineByLine) {
    DBName = "jasparFungi";
    WriteDatabaseTopResultsListWithoutMotif(Records{record(1, 2, 0.85)}, 3, 1);
    EXPECT_EQ(read("Results_Database_Matching_Without_Motif_Details.txt"),
              row({{"Motif ID", 15},
                   {"Motif name", 16},
                   {"Matching format of first motif", 40},
                   {"Matching format of second motif", 40},
                   {"Direction", 15},
                   {"Position #", 15},
                   {"# of overlap", 15},
                   {"Similarity score", 15}}) +
                  row({{"MA0002.1", 15},
                       {"Ref two", 16},
                       {"Original Motif", 40},
                       {"Reverse Complement", 40},
                       {"Forward", 15},
                       {"2", 15},
                       {"4", 15},
                       {"0.85", 15}}) +
                  "\nTaxon: Homo sapiens\n\n"
                  "Consensus sequence (original motif): AACC\n"
                  "Consensus sequence (reverse complement motif): GGTT\n"
                  "\nAlignment:\nGGTT\n-AACC\n\n" +
                  hyphens());
}

TEST_F(ResultTextTest, CollectionRecordsOfTheOtherKindAreSkipped) {
    const Records list = {record(2, 1, 0.25), record(1, 2, 0.85)};
    WriteDatabaseTopResultsList(list, 3, 1);
    const std::string text = read("Results_Database_Matching.txt");
    EXPECT_THAT(text, HasSubstr("MA0002.1"));
    EXPECT_THAT(text, Not(HasSubstr("MA0001.1")));
    EXPECT_THAT(text, HasSubstr("0.85 "));  // still the first score of the report
    WriteDatabaseTopResultsGlobalList(list, 3, 1);
    EXPECT_EQ(read("Results_Database_Matching_Global_Matching.txt"), text);
}

TEST_F(ResultTextTest, CollectionReportsHaveNoPairsForm) {
    WriteDatabaseTopResultsList(Records{record(1, 2, 0.85)}, 1, 0);
    EXPECT_EQ(read("Results_Database_Matching.txt"), "");
}

TEST(TaxonLabel, IsSpeciesForSomeCollections) {
    for (const char* name :
         {"transfac", "uniprobeHuman", "uniprobeMouse", "uniprobeParasite", "uniprobeWorm", "uniprobeYeast"}) {
        EXPECT_STREQ(taxonLabel(name), "Species") << name;
    }
    for (const char* name : {"jasparAll", "jasparFungi", "jasparVertebrates", "N", ""}) {
        EXPECT_STREQ(taxonLabel(name), "Taxon") << name;
    }
}

TEST_F(ResultTextTest, MatricesOfBothListsAreKeptApart) {
    WriteTopResultsList(Records{record(1, 2, 0.85)}, 3, 1);
    WriteDatabaseTopResultsList(Records{record(1, 2, 0.85)}, 3, 1);
    EXPECT_THAT(read("Results.txt"), HasSubstr(secondMatrices()));
    EXPECT_THAT(read("Results_Database_Matching.txt"), HasSubstr("Consensus sequence: AACC\n"));
}

TEST_F(ResultTextTest, LongListsAreWrittenWhole) {
    const Records list(3000, record(1, 2, 0.85));
    WriteTopResultsListWithoutMotif(list, 3, 1);
    const std::string text = read("Results_Without_Motif_Details.txt");
    WriteTopResultsListWithoutMotif(Records{record(1, 2, 0.85)}, 3, 1);
    const std::string longer = read("Results_Without_Motif_Details.txt");
    EXPECT_EQ(text.size() % (longer.size() - text.size()), 0U);
    EXPECT_EQ(text.size() / (longer.size() - text.size()), 3000U);
}

using ResultTextDeathTest = ResultTextTest;

TEST_F(ResultTextDeathTest, MissingFolderEndsTheRun) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    outputFileLocation = folder() + "missing/Results.txt";
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            WriteTopResultsList({}, 3, 1);
        },
        ::testing::ExitedWithCode(1), "Invalid output path or output filename.$");
}

}  // namespace
}  // namespace varnolix
