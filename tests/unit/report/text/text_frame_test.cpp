#include "report/text/text_frame.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <iomanip>
#include <regex>
#include <sstream>

#include "report/stages.h"
#include "run/output_names.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using ::testing::HasSubstr;
using testing::times;

class TextFrameTest : public testing::FolderTest {
  protected:
    TextFrameTest() {
        outputPath = folder();
        jobID = "J_1_";
        nameOutputFiles();
        numFile = 2;
        numTopMotif = 10;
        numBestMatches = 5;
        simCutoff = 0.75;
        DBName = "N";
        motifCluster = "N";
        combinedMotifFlag = "Y";
        outputFileType = "All";
        outputFileFormat = "Text";
        FileNameType = {{"motifs.txt", 4, 12, 1}, {"b.txt", 10, 3, 2}};
    }

    std::string header() const {
        const std::ostringstream stream;
        return textHeader(stream);
    }
};

TEST_F(TextFrameTest, HeaderStandsLineByLine) {
    const std::string stars = times(196, '*') + "\n";
    EXPECT_EQ(header(), stars +
                            "VARNOLIX - Matrix Kinship Finder\n"
                            "Version 2.1\n"
                            "\n" +
                            stars + "INPUT\n" + stars +
                            "\n"
                            "Input Parameters \n"
                            "Number of files: 2\n"
                            "Number of top significant motifs: 10\n"
                            "Number of best matches: 5\n"
                            "Similarity cutoff: >= 0.75\n"
                            "Matching motif database: None\n"
                            "Phylogenetic tree: No\n"
                            "Combined similar motifs: Yes\n"
                            "Output file type: All\n"
                            "Output file format: Text\n"
                            "\n"
                            "Input files and motif counts\n"
                            "File name           Count of motifs     Dataset #      \n"
                            "motifs.txt          12                  1              \n"
                            "b.txt               3                   2              \n"
                            "\n" +
                            stars + "RESULTS\n" + stars + "\n");
}

TEST_F(TextFrameTest, NameColumnIsTenWideWithoutFiles) {
    FileNameType.clear();
    EXPECT_THAT(header(), HasSubstr("\nFile name Count of motifs     Dataset #      \n\n***"));
}

TEST_F(TextFrameTest, CutoffHasNoTrailingZeros) {
    simCutoff = 0.5;
    EXPECT_THAT(header(), HasSubstr("Similarity cutoff: >= 0.5\n"));
}

TEST_F(TextFrameTest, EveryCollectionHasItsLabel) {
    struct Label {
        const char* name;
        const char* label;
    };
    for (const Label& each : {Label{"transfac", "Transfac"},
                              {"jasparAll", "Jaspar Core"},
                              {"jasparFungi", "Jaspar Fungi"},
                              {"jasparInsects", "Jaspar Insects"},
                              {"jasparNematodes", "Jaspar Nematodes"},
                              {"jasparPlants", "Jaspar Plants"},
                              {"jasparUrochordates", "Jaspar Urochordates"},
                              {"jasparVertebrates", "Jaspar Vertebrates"},
                              {"uniprobeHuman", "UniProbe Homo Sapiens"},
                              {"uniprobeMouse", "UniProbe Mus Musculus"},
                              {"uniprobeParasite", "UniProbe Parasite (Plasmodium Falciparum)"},
                              {"uniprobeWorm", "UniProbe Worm (Caenorhabditis Elegans)"},
                              {"uniprobeYeast", "UniProbe Yeast (Saccharomyces Cerevisiae)"},
                              {"N", "None"},
                              {"", "None"},
                              {"jaspar", "None"}}) {
        DBName = each.name;
        EXPECT_THAT(header(), HasSubstr("Matching motif database: " + std::string(each.label) + "\n"));
    }
}

TEST_F(TextFrameTest, OnlyYMeansYes) {
    motifCluster = "Y";
    combinedMotifFlag = "N";
    EXPECT_THAT(header(), HasSubstr("Phylogenetic tree: Yes\nCombined similar motifs: No\n"));
}

TEST_F(TextFrameTest, FooterHoldsTimeAndRunTime) {
    wtime = 1.5;
    const std::ostringstream stream;
    EXPECT_TRUE(std::regex_match(textFooter(stream),
                                 std::regex(R"(\nResults created by VARNOLIX on \d\d-\d\d-\d{4} \d\d:\d\d:\d\d\n)"
                                            R"(Runtime: 1\.5 seconds\n\nVARNOLIX is written by Hadrel Quonsett\n)")))
        << textFooter(stream);
}

TEST_F(TextFrameTest, FooterOfReportWithMatrixHasSixDecimals) {
    wtime = 1.5;
    std::ostringstream stream;
    stream << std::fixed;
    EXPECT_THAT(textFooter(stream), HasSubstr("Runtime: 1.500000 seconds\n"));
}

struct Frame {
    void (*header)();
    void (*footer)();
    std::ofstream& stream;
    const char* file;
};

TEST_F(TextFrameTest, EveryReportHasHeaderAndFooter) {
    const Frame frames[] = {
        {writeHeaderText, writeFooterText, myfile, "J_1_Results.txt"},
        {writeHeaderTextWithoutMotif, writeFooterTextWithoutMotif, myfileWithoutMotif,
         "J_1_Results_Without_Motif_Details.txt"},
        {writeHeaderGlobalText, writeFooterGlobalText, myGlobalMatchingFile, "J_1_Results_Global_Matching.txt"},
        {writeHeaderTextDatabaseMatch, writeFooterTextDatabaseMatch, myDatabaseMatchingFile,
         "J_1_Results_Database_Matching.txt"},
        {writeHeaderTextWithoutMotifDatabaseMatch, writeFooterTextWithoutMotifDatabaseMatch,
         myDatabaseMatchingFileWithoutMotif, "J_1_Results_Database_Matching_Without_Motif_Details.txt"},
        {writeHeaderGlobalTextDatabaseMatch, writeFooterGlobalTextDatabaseMatch, myDatabaseMatchingGlobalMatchingFile,
         "J_1_Results_Database_Matching_Global_Matching.txt"},
    };
    for (const Frame& frame : frames) {
        write(frame.file, "an earlier report");
        frame.header();
        EXPECT_FALSE(frame.stream.is_open());
        EXPECT_EQ(read(frame.file), header());
        frame.footer();
        EXPECT_FALSE(frame.stream.is_open());
        const std::string text = read(frame.file);
        ASSERT_GT(text.size(), header().size());
        EXPECT_EQ(text.substr(0, header().size()), header());
        EXPECT_THAT(text, HasSubstr("VARNOLIX is written by Hadrel Quonsett\n"));
        frame.header();
        EXPECT_EQ(read(frame.file), header());
    }
}

using TextFrameDeathTest = TextFrameTest;

TEST_F(TextFrameDeathTest, MissingFolderEndsTheRun) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    outputFileLocation = folder() + "missing/Results.txt";
    for (void (*writer)() : {writeHeaderText, writeFooterText}) {
        EXPECT_EXIT(
            {
                dup2(STDERR_FILENO, STDOUT_FILENO);
                writer();
            },
            ::testing::ExitedWithCode(1), "Invalid output path or output filename.$");
    }
}

}  // namespace
}  // namespace varnolix
