#include "report/page/result_page.h"

#include <gmock/gmock.h>

#include "report/stages.h"
#include "run/output_names.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

using Records = std::vector<dataCombinedScore>;

std::string cellText(const std::string& text) {
    return "<td><font size = '2'>\n" + text + "\n</font></td>\n";
}

std::string cellLeftOpenText(const std::string& text) {
    return "<td><font size = '2'>\n" + text + "\n</td>\n";
}

std::string twoCells(const std::string& label, const std::string& value) {
    return "<tr>\n" + cellText(label) + cellText(value) + "</tr>\n";
}

class ResultPageTest : public testing::FolderTest {
  protected:
    ResultPageTest() {
        outputPath = folder();
        nameOutputFiles();
        jobID = "J_1_";
        Datasets = {testing::motifOfText(1, "AACC", 1, "first"), testing::motifOfText(2, "TAACC", 2, "a<b>&'c'")};
        DatabaseDatasets = {testing::motifOfText(1, "GGGG", 1, "Ref"), testing::motifOfText(2, "AACC", 1, "R&D")};
        DatabaseDatasets[1].motifID = "UP00012_1";
        DatabaseDatasets[1].taxon = "Homo <sapiens>";
    }

    static dataCombinedScore record(int first, int second) {
        dataCombinedScore made{};
        made.matrixID1 = first;
        made.matrixID2 = second;
        made.position = 2;
        made.overlap = 4;
        made.combinedScore = 0.85;
        made.matchingFormat2 = MatchingFormat::reverseComplement;
        return made;
    }

    std::string collectionPage(const char* name) const {
        DBName = name;
        std::filesystem::remove(folder() + "HTML_Results_Database_Matching.html");
        WriteDatabaseTopResultsListHTML(Records{record(1, 2)}, 3, 1);
        return read("HTML_Results_Database_Matching.html");
    }
};

TEST_F(ResultPageTest, RecordStandsLineByLine) {
    WriteTopResultsListHTML(Records{record(1, 2)}, 3, 1);
    EXPECT_EQ(read("HTML_Results.html"),
              "<table class='sansserif' width='600' cellpadding='0' cellspacing='0' >\n"
              "<col width= '300'>\n" +
                  twoCells("Dataset #:", "2") + twoCells("Motif ID:", "2") + "<tr>\n" +
                  cellLeftOpenText("Motif name:") + cellText("a&lt;b&gt;&amp;&#39;c&#39;") + "</tr>\n" + "<tr>\n" +
                  cellText("Matching format of first motif:") + cellLeftOpenText("Original Motif") + "</tr>\n" +
                  twoCells("Matching format of second motif:", "Reverse Complement") +
                  twoCells("Direction:", "Forward") + twoCells("Position number:", "2") +
                  twoCells("Number of overlap:", "4") + twoCells("Similarity score:", "0.85") +
                  "</table>\n"
                  "<br>\n"
                  "<font face='Arial' size='2'>\n"
                  "Alignment:\n"
                  "</font>\n"
                  "<br>\n"
                  "<font face = 'Courier New'>\nGGTTA\n</font>\n"
                  "<br>\n"
                  "<font face = 'Courier New'>\n-AACC\n</font>\n"
                  "<p>\n"
                  "<table class='sansserif' width='1000' border = '0' cellSpacing = '1' cellPadding = '1' >\n"
                  "<col width= '500'>\n"
                  "<tr>\n" +
                  cellText("Original motif\n&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;\nConsensus sequence: TAACC") +
                  cellText("Reverse complement motif\n&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;\nConsensus sequence: GGTTA") +
                  "</tr>\n"
                  "<tr>\n<td></td>\n</tr>\n"
                  "<tr>\n"
                  "<td>\n"
                  "<img src = 'J_1_image/J_1_M2.jpeg'\n"
                  "name = 'Image2' align = 'left' width = '350' height = '100' border = '0'> \n"
                  "</td>\n"
                  "<td>\n"
                  "<img src = 'J_1_image/J_1_M2RevComp.jpeg'\n"
                  "name = 'ImageRevComp2' align = 'left' width = '350' height = '100' border = '0'> \n"
                  "</td>\n"
                  "</tr>\n"
                  "</table>\n"
                  "</p>\n"
                  "<hr>\n");
}

TEST_F(ResultPageTest, ScoresStayGeneral) {
    WriteTopResultsListHTML(Records{record(1, 2), record(1, 2)}, 3, 1);
    EXPECT_THAT(read("HTML_Results.html"), Not(HasSubstr("0.850000")));
}

TEST_F(ResultPageTest, GlobalPageSpacesItsBackwardLabel) {
    dataCombinedScore backward = record(1, 2);
    backward.direction = Direction::backward;
    WriteTopResultsListHTML(Records{record(1, 2), backward}, 3, 1);
    WriteTopResultsGlobalMatchingListHTML(Records{record(1, 2), backward}, 1);
    std::string expected = read("HTML_Results.html");
    const std::string label = "<font face='Arial' size='2'>";
    expected.replace(expected.rfind(label), label.size(), "<font face='Arial' size = '2'>");
    EXPECT_EQ(read("HTML_Global_Matching_Results.html"), expected);
}

TEST_F(ResultPageTest, CollectionRecordDiffersInItsFirstRows) {
    const std::string page = collectionPage("uniprobeHuman");
    EXPECT_THAT(page, ::testing::StartsWith("<table class='sansserif' width='1000' cellpadding='0' cellspacing='0' >\n"
                                            "<col width= '300'>\n<col width= '700'>\n<tr>\n" +
                                            cellText("Motif ID:")));
    EXPECT_THAT(page, HasSubstr("</tr>\n<tr>\n" + cellLeftOpenText("Motif name:") + cellText("R&amp;D") + "</tr>\n" +
                                twoCells("Species:", "Homo &lt;sapiens&gt;") + "<tr>\n" +
                                cellText("Matching format of first motif:")));
    EXPECT_THAT(page, Not(HasSubstr("Dataset #:")));
    EXPECT_THAT(page,
                HasSubstr("<table class='sansserif' width='1200' border = '0' cellSpacing = '1' cellPadding = '1' "
                          ">\n<col width= '600'>\n<tr>\n" +
                          cellText("Original motif\n&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;\nConsensus sequence: AACC")));
    EXPECT_THAT(page, HasSubstr("<img src = 'J_1_image/J_1_D2.jpeg'\nname = 'Image2'"));
}

TEST_F(ResultPageTest, LinksLeadToTheCatalogues) {
    struct Link {
        const char* name;
        const char* id;
        const char* row;
    };
    for (const Link& each :
         {Link{"transfac", "M00001",
               "AC:\n</font></td>\n<td><font size = '2'>\n"
               "<a href='http://www.gene-regulation.com/cgi-bin/pub/databases/transfac/getTF.cgi?M00001' "
               "target ='_blank'>M00001</a></font></td>\n"},
          {"jasparPlants", "MA0001.1",
           "Motif ID:\n</font></td>\n<td><font size = '2'>\n"
           "<a href='http://jaspar.genereg.net/cgi-bin/jaspar_db.pl?rm=present&collection=CORE&ID=MA0001.1' "
           "target ='_blank'>MA0001.1</a></font></td>\n"},
          {"uniprobeYeast", "UP00012_1",
           "Motif ID:\n</font></td>\n<td><font size = '2'>\n"
           "<a href='http://the_brain.bwh.harvard.edu/uniprobe/detailsDef.php?id=012' "
           "target ='_blank'>UP00012_1</a></font></td>\n"}}) {
        DatabaseDatasets[1].motifID = each.id;
        EXPECT_THAT(collectionPage(each.name), HasSubstr(each.row)) << each.name;
    }
}

TEST_F(ResultPageTest, ShortUniprobeIdsGiveShortLinks) {
    struct Link {
        const char* id;
        const char* end;
    };
    for (const Link& each :
         {Link{"", ""}, {"UP", ""}, {"UP00", ""}, {"UP001", "1"}, {"UP0012", "12"}, {"UP00123", "123"}}) {
        DatabaseDatasets[1].motifID = each.id;
        EXPECT_THAT(collectionPage("uniprobeWorm"),
                    HasSubstr("detailsDef.php?id=" + std::string(each.end) + "' target ='_blank'>" + each.id + "</a>"));
    }
}

TEST_F(ResultPageTest, CollectionRecordsOfTheOtherKindAreSkipped) {
    WriteDatabaseTopResultsGlobalListHTML(Records{record(2, 1)}, 3, 1);
    EXPECT_EQ(read("HTML_Results_Database_Matching_Global_Matching.html"), "");
}

TEST_F(ResultPageTest, OtherModesPrintNothing) {
    for (const auto& [mode, id] : {std::pair{1, 0L}, {1, 1L}, {0, 1L}, {2, 0L}, {3, -1L}}) {
        WriteTopResultsListHTML(Records{record(1, 2)}, mode, id);
    }
    EXPECT_EQ(read("HTML_Results.html"), "");
}

}  // namespace
}  // namespace varnolix
