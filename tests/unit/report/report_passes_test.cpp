#include "report/report_passes.h"
#include "run/settings.h"

#include <gmock/gmock.h>

#include "report/page/html_text.h"
#include "report/stages.h"
#include "report/text/motif_text.h"
#include "run/output_names.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using ::testing::HasSubstr;
using testing::times;

class ReportPassesTest : public testing::FolderTest {
  protected:
    ReportPassesTest() {
        outputPath = folder();
        nameOutputFiles();
        jobID = "J_1_";
        Datasets = {testing::motifOfText(1, "AACC", 1, "first"), testing::motifOfText(2, "TAACC", 2, "b&c")};
        dataCombinedScore record{};
        record.matrixID1 = 2;
        record.matrixID2 = 1;
        record.position = 1;
        record.overlap = 4;
        record.combinedScore = 0.85;
        lists = {{}, {record}};
    }

    ReportWalk walk(std::vector<int> motifs, bool isNote = false) const {
        return {ListKind::eachMotif,        " Section ", 3,        4,     " Matches of ",    5,     2,
                "Reverse complement motif", 3,           Datasets, lists, std::move(motifs), isNote};
    }

    RecordLists lists;
};

TEST_F(ReportPassesTest, TextSectionListsItsMotifs) {
    writePass(walk({2}), {reports::full, PassForm::text, WriteTopResultsList});
    EXPECT_THAT(read("Results.txt"), ::testing::StartsWith("*** Section ****\n\n"
                                                           "Dataset #: 2\t\tMotif ID: 2\t\tMotif name: b&c\n\n" +
                                                           matrixBlock(Datasets[1]) +
                                                           "\n\n"
                                                           "***** Matches of 2 (Highest to Lowest) *****\n\n"
                                                           "Dataset #      Motif ID"));
    EXPECT_FALSE(myfile.is_open());
}

TEST_F(ReportPassesTest, BlockOfTheMotifKeepsTheNotation) {
    writePass(walk({2}), {reports::full, PassForm::text, WriteTopResultsList});
    EXPECT_THAT(read("Results.txt"), HasSubstr("0.85           \n"));
}

TEST_F(ReportPassesTest, BriefSectionHasOneLineForAMotif) {
    writePass(walk({2}), {reports::brief, PassForm::brief, WriteTopResultsListWithoutMotif});
    EXPECT_THAT(read("Results_Without_Motif_Details.txt"),
                ::testing::StartsWith("*** Section ****\n\n"
                                      "Dataset #: 2\t\tMotif ID: 2\t\tMotif name: b&c\t\tConsensus sequence (original "
                                      "motif): TAACC\t\tConsensus sequence (reverse complement motif): GGTTA\n\n\n\n"
                                      "** Matches of 2 (Highest to Lowest) **\n\n"
                                      "Dataset #      Motif ID"));
}

TEST_F(ReportPassesTest, PageSectionListsItsMotifs) {
    writePass(walk({2}), {reports::fullPage, PassForm::page, WriteTopResultsListHTML});
    EXPECT_THAT(read("HTML_Results.html"),
                ::testing::StartsWith(
                    "</div>\n<div class = 'boxed'>\n<h3 class='sansserif'> Section </h3>\n"
                    "<table class='sansserif' width='900' border = '0' cellSpacing = '1' cellPadding = '1' >\n"
                    "<col width= '170'>\n<col width= '150'>\n<col width= '600'>\n<tr>\n"
                    "<td><b>\nDataset #: 2\n</b></td>\n<td><b>\nMotif ID: 2\n</b></td>\n<td><b>\nMotif name: "
                    "b&amp;c\n</b></td>\n"
                    "</tr>\n</table>\n"
                    "<p>\n<table class='sansserif' width='1200' border = '0' cellSpacing = '1' cellPadding = '1' >\n"
                    "<col width= '600'>\n<col width= '600'>\n" +
                    tableRow(cell("Original motif") + cell("Reverse complement motif")) +
                    tableRow(cell("Consensus sequence: TAACC") + cell("Consensus sequence: GGTTA")) +
                    tableRow("<td></td>\n<td></td>\n") + logoRow('M', 2) +
                    "</table>\n</p>\n"
                    "<p class='sansserif'>\n<b> Matches of 2 (Highest to Lowest) </b>\n</p>\n"
                    "<table class='sansserif' width='600'"));
}

TEST_F(ReportPassesTest, SectionWithoutMotifsIsItsHeading) {
    writePass(walk({}), {reports::full, PassForm::text, WriteTopResultsList});
    EXPECT_EQ(read("Results.txt"), "*** Section ****\n\n");
}

TEST_F(ReportPassesTest, OneFileHasANoteInPlaceOfMotifs) {
    writePass(walk({2}, true), {reports::full, PassForm::text, WriteTopResultsList});
    EXPECT_EQ(read("Results.txt"), "*** Section ****\n\nThere is no global matching for 1 motif file.\n");
    writePass(walk({2}, true), {reports::fullPage, PassForm::page, WriteTopResultsListHTML});
    EXPECT_EQ(read("HTML_Results.html"),
              "</div>\n<div class = 'boxed'>\n<h3 class='sansserif'> Section </h3>\n"
              "<p class='sansserif'><font size = '2'> There is no global matching for 1 motif file. </font></p>\n");
}

TEST_F(ReportPassesTest, ListsAreKeptWhereTheJobWantsThem) {
    keepRankedLists(walk({2}));
    EXPECT_TRUE(rankedLists.empty());
    keepsRankedLists = true;
    keepRankedLists(walk({2}));
    keepRankedLists(walk({2}, true));
    ASSERT_EQ(rankedLists.size(), 1U);
    EXPECT_EQ(rankedLists[0].kind, ListKind::eachMotif);
    EXPECT_EQ(rankedLists[0].matrixID, 2);
    ASSERT_EQ(rankedLists[0].matches.size(), 1U);
    EXPECT_EQ(rankedLists[0].matches[0].combinedScore, 0.85);
}

TEST_F(ReportPassesTest, FormatChoosesThePasses) {
    struct Case {
        const char* format;
        std::vector<PassForm> forms;
        bool isPDF;
    };
    for (const Case& each : {Case{"Text", {PassForm::text, PassForm::brief}, false},
                             {"HTML", {PassForm::page}, false},
                             {"PDF", {PassForm::page}, true},
                             {"All", {PassForm::text, PassForm::brief, PassForm::page}, true}}) {
        outputFileFormat = each.format;
        std::vector<PassForm> forms;
        for (const ReportPass& pass :
             passesForFormat({{reports::full, PassForm::text, WriteTopResultsList},
                              {reports::brief, PassForm::brief, WriteTopResultsListWithoutMotif},
                              {reports::fullPage, PassForm::page, WriteTopResultsListHTML}})) {
            forms.push_back(pass.form);
        }
        EXPECT_EQ(forms, each.forms) << each.format;
        EXPECT_EQ(writesPDF(), each.isPDF) << each.format;
    }
}

}  // namespace
}  // namespace varnolix
