#include "run/output_names.h"

#include <cstdlib>
#include <ctime>
#include <regex>
#include <string>

#include "run/run_text.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

TEST(ResultFolder, StandsBesideTheInputFolder) {
    EXPECT_EQ(resultFolder("/home/a/motifs/"), "/home/a/result/");
}

TEST(ResultFolder, CutsSevenCharactersWhateverTheyAre) {
    EXPECT_EQ(resultFolder("/home/a/motif/"), "/home/aresult/");
    EXPECT_EQ(resultFolder("/home/a/motifs"), "/home/aresult/");
    EXPECT_EQ(resultFolder("/home/a/longer/"), "/home/a/result/");
}

TEST(ResultFolder, SevenCharactersShortenToNothing) {
    EXPECT_EQ(resultFolder("motifs/"), "result/");
    EXPECT_EQ(resultFolder("1234567"), "result/");
}

TEST(ResultFolder, EightCharactersKeepOne) {
    EXPECT_EQ(resultFolder("/motifs/"), "/result/");
}

TEST(ResultFolder, ShorterPathStaysWhole) {
    EXPECT_EQ(resultFolder("123456"), "123456result/");
    EXPECT_EQ(resultFolder("in/"), "in/result/");
    EXPECT_EQ(resultFolder(""), "result/");
}

TEST(JobNumber, HasFourDigits) {
    EXPECT_EQ(jobNumber(0), 1000);
    EXPECT_EQ(jobNumber(3821), 4821);
    EXPECT_EQ(jobNumber(8999), 9999);
    EXPECT_EQ(jobNumber(9000), 1000);
    EXPECT_EQ(jobNumber(2147483647), 1000 + 2147483647 % 9000);
}

TEST(JobID, HoldsDateAndNumber) {
    const std::string before = getCurrDateTimeFormat().substr(0, 10);
    const std::string job = makeJobID();
    const std::string after = getCurrDateTimeFormat().substr(0, 10);
    ASSERT_TRUE(std::regex_match(job, std::regex(R"(J_\d{4}-\d\d-\d\d_[1-9]\d{3}_)"))) << job;
    EXPECT_TRUE(job.substr(2, 10) == before || job.substr(2, 10) == after) << job;
}

TEST(JobID, NumberFollowsTheSecond) {
    // Calls within the same second give the same number. Of three calls, at least two neighbours share a second.
    const std::string first = makeJobID();
    const std::string second = makeJobID();
    const std::string third = makeJobID();
    EXPECT_TRUE(first == second || second == third);
}

TEST(JobID, NumberIsDerivedFromTheRandomOne) {
    // makeJobID() sets the seed, so the same seed gives the same number. A new second may begin between the two.
    const auto wanted = [] {
        std::srand(static_cast<unsigned>(std::time(nullptr)));
        return std::to_string(jobNumber(std::rand()));
    };
    const std::string before = wanted();
    const std::string job = makeJobID();
    const std::string after = wanted();
    const std::string number = job.substr(13, 4);
    EXPECT_TRUE(number == before || number == after) << job;
}

class OutputNamesTest : public testing::RunTest {};

TEST_F(OutputNamesTest, PutsJobInFrontAndFolderBeforeIt) {
    jobID = "J_2016-05-21_4821_";
    outputPath = "/home/a/result/";
    nameOutputFiles();
    struct Name {
        const std::string& name;
        const std::string& location;
        const char* plain;
    };
    const Name names[] = {
        {outputFile, outputFileLocation, "Results.txt"},
        {outputFileWithoutMotif, outputFileWithoutMotifLocation, "Results_Without_Motif_Details.txt"},
        {outputGlobalMatchingFile, outputFileGlobalMatchingLocation, "Results_Global_Matching.txt"},
        {outputHTMLFile, outputHTMLFileLocation, "HTML_Results.html"},
        {outputHTMLGlobalMatchingFile, outputHTMLGlobalMatchingFileLocation, "HTML_Global_Matching_Results.html"},
        {outputDatabaseMatchingFile, outputDatabaseMatchingFileLocation, "Results_Database_Matching.txt"},
        {outputDatabaseMatchingFileWithoutMotif, outputDatabaseMatchingFileWithoutMotifLocation,
         "Results_Database_Matching_Without_Motif_Details.txt"},
        {outputDatabaseMatchingHTMLFile, outputDatabaseMatchingHTMLFileLocation, "HTML_Results_Database_Matching.html"},
        {outputDatabaseMatchingGlobalMatchingFile, outputDatabaseMatchingGlobalMatchingFileLocation,
         "Results_Database_Matching_Global_Matching.txt"},
        {outputDatabaseMatchingGlobalMatchingHTMLFile, outputDatabaseMatchingGlobalMatchingHTMLFileLocation,
         "HTML_Results_Database_Matching_Global_Matching.html"},
        {outputCombinedMatrixGlobalFile, outputCombinedMatrixGlobalFileLocation,
         "Results_Combined_Motifs_Global_Matching.txt"},
        {outputCombinedMatrixGlobalAndLocalFile, outputCombinedMatrixGlobalAndLocalFileLocation,
         "Results_Combined_Motifs_Global_and_Local_Matching.txt"},
        {outputCombinedMatrixBestMatchesFile, outputCombinedMatrixBestMatchesFileLocation,
         "Results_Combined_Motifs_Best_Matches.txt"},
        {outputPhylogeneticTreeHTMLFile, outputPhylogeneticTreeHTMLFileLocation, "Phylogenetic_Tree.html"},
        {outputPhylogeneticTreeGlobalHTMLFile, outputPhylogeneticTreeGlobalHTMLFileLocation,
         "Global_Matching_Phylogenetic_Tree.html"},
    };
    for (const Name& each : names) {
        EXPECT_EQ(each.name, std::string("J_2016-05-21_4821_") + each.plain);
        EXPECT_EQ(each.location, std::string("/home/a/result/J_2016-05-21_4821_") + each.plain);
    }
}

}  // namespace
}  // namespace varnolix
