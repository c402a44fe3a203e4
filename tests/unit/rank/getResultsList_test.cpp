#include "rank/stages.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "run/output_names.h"
#include "scan/stages.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using ::testing::HasSubstr;
using testing::times;

class GetResultsListTest : public testing::FolderTest {
  protected:
    GetResultsListTest() {
        outputPath = folder();
        nameOutputFiles();
        numFile = 2;
        numTopMotif = 2;
        numBestMatches = 5;
        simCutoff = 0.9;
        outputFileType = "All";
        outputFileFormat = "Text";
        motifCluster = "N";
        combinedMotifFlag = "N";
        // Motifs 1 and 2 of the first file and 3 of the second are alike; motif 4 matches none of them.
        Datasets = {testing::motifOfText(1, "AACCA", 1), testing::motifOfText(2, "AACCA", 1),
                    testing::motifOfText(3, "AACCA", 2), testing::motifOfText(4, "GTGTGT", 2)};
    }

    static void scanAndRank() {
        forwardScan();
        backwardScan();
        getMaxScores();
        calculateSumScoresCompare();
        getResultsList();
    }

    std::set<std::string> files() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder())) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    static std::vector<std::vector<int>> partners(const RecordLists& groups) {
        std::vector<std::vector<int>> ids;
        for (const auto& group : groups) {
            auto& list = ids.emplace_back();
            list.push_back(group.front().matrixID1);
            for (const dataCombinedScore& record : group) list.push_back(record.matrixID2);
        }
        return ids;
    }
};

using Groups = std::vector<std::vector<int>>;

TEST_F(GetResultsListTest, TopGroupsAreThoseOfTheRankingAcrossFiles) {
    scanAndRank();
    // All sums are 0. Motif 4 has no match, so it does not count as a top motif.
    EXPECT_EQ(partners(topGlobalMatchingResults), (Groups{{1, 3}, {2, 3}}));
    EXPECT_EQ(globalMatchingScoreResultList.size(), 4U);
    EXPECT_EQ(commonBestScoreResultList.size(), 4U);
}

TEST_F(GetResultsListTest, OtherGroupsAreKeptForMergingOnly) {
    scanAndRank();
    EXPECT_TRUE(topGlobalAndLocalMatchingResults.empty());
    EXPECT_TRUE(topBestMatchesResults.empty());
}

TEST_F(GetResultsListTest, MergingKeepsAllGroups) {
    combinedMotifFlag = "Y";
    scanAndRank();
    EXPECT_EQ(partners(topGlobalAndLocalMatchingResults), (Groups{{1, 2, 3}, {2, 1, 3}}));
    EXPECT_EQ(partners(topBestMatchesResults), (Groups{{1, 2, 3}, {2, 1, 3}, {3, 1, 2}}));
}

TEST_F(GetResultsListTest, GlobalOnlyKeepsTheGlobalGroupsOnly) {
    combinedMotifFlag = "Y";
    outputFileType = "Global-Only";
    scanAndRank();
    EXPECT_EQ(topGlobalMatchingResults.size(), 2U);
    EXPECT_TRUE(topGlobalAndLocalMatchingResults.empty());
    EXPECT_TRUE(topBestMatchesResults.empty());
}

TEST_F(GetResultsListTest, TypeAndFormatChooseTheReports) {
    struct Case {
        const char* type;
        const char* format;
        std::set<std::string> names;
    };
    const std::string full = "Results.txt";
    const std::string brief = "Results_Without_Motif_Details.txt";
    const std::string global = "Results_Global_Matching.txt";
    const std::string fullPage = "HTML_Results.html";
    const std::string globalPage = "HTML_Global_Matching_Results.html";
    for (const Case& each : {Case{"Global-Only", "Text", {global}},
                             {"Global-Only", "HTML", {globalPage}},
                             {"Global-Only", "PDF", {globalPage}},
                             {"Global-Only", "All", {global, globalPage}},
                             {"All", "Text", {full, brief, global}},
                             {"All", "HTML", {fullPage, globalPage}},
                             {"All", "PDF", {fullPage, globalPage}},
                             {"All", "All", {full, brief, global, fullPage, globalPage}}}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder())) std::filesystem::remove(entry);
        outputFileType = each.type;
        outputFileFormat = each.format;
        scanAndRank();
        EXPECT_EQ(files(), each.names) << each.type << " " << each.format;
    }
}

/// The headings of a report, in order.
std::vector<std::string> headings(const std::string& text) {
    std::vector<std::string> found;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("***")) found.push_back(line);
    }
    return found;
}

std::string stars(std::size_t before, const std::string& title, std::size_t after) {
    return times(before, '*') + title + times(after, '*');
}

std::string matchHeading(std::size_t count, const char* title, int id) {
    return stars(count, title + std::to_string(id) + " (Highest to Lowest) ", count);
}

TEST_F(GetResultsListTest, FullReportHasThreeSections) {
    scanAndRank();
    const char* top = " Best Matches for Top Significant Motif ID ";
    const char* significant = " Best Matches for Significant Motif ID ";
    const char* each = " Best Matches for Motif ID ";
    const auto expected = [&](std::size_t significantStars) {
        return std::vector<std::string>{
            stars(66, " Top 2 Significant Motifs - Global Matching (Highest to Lowest) ", 66),
            matchHeading(63, top, 1),
            matchHeading(63, top, 2),
            stars(64, " Significant Motifs - Global and Local Matching (Highest to Lowest) ", 64),
            matchHeading(significantStars, significant, 1),
            matchHeading(significantStars, significant, 2),
            stars(70, " Best Matches for Each Motif (Highest to Lowest) ", 77),
            matchHeading(72, each, 1),
            matchHeading(72, each, 2),
            matchHeading(72, each, 3)};
    };
    EXPECT_EQ(headings(read("Results.txt")), expected(67));
    EXPECT_EQ(headings(read("Results_Without_Motif_Details.txt")), expected(62));
    EXPECT_EQ(headings(read("Results_Global_Matching.txt")),
              (std::vector<std::string>{expected(0)[0], expected(0)[1], expected(0)[2]}));
}

TEST_F(GetResultsListTest, OneFileHasANoteInEachTopSection) {
    numFile = 1;
    for (data& motif : Datasets) motif.datasetNum = 1;
    scanAndRank();
    const std::string note = stars(66, " Top 2 Significant Motifs - Global Matching (Highest to Lowest) ", 66) +
                             "\n\nThere is no global matching for 1 motif file.\n";
    EXPECT_EQ(read("Results_Global_Matching.txt"), note);
    EXPECT_THAT(read("Results.txt"),
                ::testing::StartsWith(
                    note + stars(64, " Significant Motifs - Global and Local Matching (Highest to Lowest) ", 64)));
    EXPECT_TRUE(topGlobalMatchingResults.empty());
    EXPECT_TRUE(globalMatchingScoreResultList.empty());
}

TEST_F(GetResultsListTest, NoRecordsLeaveHeadingsOnly) {
    Datasets = {testing::motifOfText(1, "AACCA", 1), testing::motifOfText(2, "ACG", 2)};
    scanAndRank();
    EXPECT_EQ(headings(read("Results.txt")).size(), 3U);
    EXPECT_TRUE(topGlobalMatchingResults.empty());
}

TEST_F(GetResultsListTest, FirstScoreOfEachReportIsGeneral) {
    Datasets = {testing::motifOfText(1, "AACCA", 1), testing::motifOfText(2, "AACC", 2)};
    scanAndRank();
    // Every record has the best score and overlap of its motif, so all scores are 0: first "0", later "0.000000".
    const std::string text = read("Results.txt");
    const std::string general = "4              0              \n";
    EXPECT_THAT(text, HasSubstr(general));
    EXPECT_EQ(text.find(general), text.rfind(general));
    EXPECT_THAT(text.substr(text.find(general)), HasSubstr("4              0.000000       \n"));
}

}  // namespace
}  // namespace varnolix
