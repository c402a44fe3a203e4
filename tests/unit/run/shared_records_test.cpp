#include "run/shared_records.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace varnolix {
namespace {

/// The values of the globals when the process starts, before any test changes them.
struct StartValues {
    std::vector<int> ones;
    int overlapColumns = 0;
    double cellScore = 0;
    std::vector<double> zeros;
    std::vector<int> zeroCounts;
    std::vector<std::string> answers;
    std::vector<std::string> names;
    std::vector<std::string> locations;
    std::vector<std::size_t> listSizes;
};

StartValues& startValues() {
    static StartValues values;
    return values;
}

class StartValuesReader : public ::testing::Environment {
  public:
    void SetUp() override {
        StartValues& values = startValues();
        values.ones = {dNum, mNum, matrixIDNum};
        values.overlapColumns = overlap;
        values.cellScore = maxScore;
        values.zeros = {simCutoff, start, stop, wtime, maxSumScoreCompare};
        values.zeroCounts = {motifNameLength,     numFile,           numTopMotif, numBestMatches, numThread,
                             maxThreadsAvailable, inputFileFormatNum};
        values.answers = {simCutoffInput,
                          numFileInput,
                          numTopMotifInput,
                          numBestMatchesInput,
                          numThreadInput,
                          inputFileFormat,
                          DBNameInput,
                          inputPath,
                          outputPath,
                          inputFilename,
                          DBName,
                          outputFileType,
                          outputFileFormat,
                          motifCluster,
                          combinedMotifFlag,
                          jobID};
        values.names = {outputFile,
                        outputFileWithoutMotif,
                        outputGlobalMatchingFile,
                        outputHTMLFile,
                        outputHTMLGlobalMatchingFile,
                        outputDatabaseMatchingFile,
                        outputDatabaseMatchingFileWithoutMotif,
                        outputDatabaseMatchingHTMLFile,
                        outputDatabaseMatchingGlobalMatchingFile,
                        outputDatabaseMatchingGlobalMatchingHTMLFile,
                        outputCombinedMatrixGlobalFile,
                        outputCombinedMatrixGlobalAndLocalFile,
                        outputCombinedMatrixBestMatchesFile,
                        outputPhylogeneticTreeHTMLFile,
                        outputPhylogeneticTreeGlobalHTMLFile};
        values.locations = {outputFileLocation, outputFileGlobalMatchingLocation, outputHTMLFileLocation};
        values.listSizes = {FileNameType.size(), Datasets.size(), DatabaseDatasets.size(),
                            DatasetsCombinedScoreLists.rows.size(), maxScoresList.size()};
    }
};

const ::testing::Environment* const startValuesReader = ::testing::AddGlobalTestEnvironment(new StartValuesReader);

TEST(StartValues, NumberingBeginsAtOne) {
    EXPECT_EQ(startValues().ones, std::vector<int>(3, 1));
}

TEST(StartValues, ComparisonIsSetToFourColumnsAndScoreOne) {
    EXPECT_EQ(startValues().overlapColumns, 4);
    EXPECT_EQ(startValues().cellScore, 1.0);
}

TEST(StartValues, AnswersAreEmpty) {
    EXPECT_EQ(startValues().zeros, std::vector<double>(5, 0.0));
    EXPECT_EQ(startValues().zeroCounts, std::vector<int>(7, 0));
    EXPECT_EQ(startValues().answers, std::vector<std::string>(16));
}

TEST(StartValues, OutputNamesAreTheDefaults) {
    const std::vector<std::string> names = {"Results.txt",
                                            "Results_Without_Motif_Details.txt",
                                            "Results_Global_Matching.txt",
                                            "HTML_Results.html",
                                            "HTML_Global_Matching_Results.html",
                                            "Results_Database_Matching.txt",
                                            "Results_Database_Matching_Without_Motif_Details.txt",
                                            "HTML_Results_Database_Matching.html",
                                            "Results_Database_Matching_Global_Matching.txt",
                                            "HTML_Results_Database_Matching_Global_Matching.html",
                                            "Results_Combined_Motifs_Global_Matching.txt",
                                            "Results_Combined_Motifs_Global_and_Local_Matching.txt",
                                            "Results_Combined_Motifs_Best_Matches.txt",
                                            "Phylogenetic_Tree.html",
                                            "Global_Matching_Phylogenetic_Tree.html"};
    EXPECT_EQ(startValues().names, names);
    EXPECT_EQ(startValues().locations, std::vector<std::string>(3));
}

TEST(StartValues, ListsAreEmpty) {
    EXPECT_EQ(startValues().listSizes, std::vector<std::size_t>(5, 0));
}

TEST(SharedRecords, BoundsAndMotifsStartEmpty) {
    const maxScores bounds;
    EXPECT_EQ(bounds.matrixID, 0);
    EXPECT_EQ(bounds.maxScore, 0.0);
    EXPECT_EQ(bounds.maxOverlap, 0);
    EXPECT_EQ(bounds.halfOverlapPlus2, 0);
    const data motif;
    EXPECT_EQ(motif.matrixID, 0);
    EXPECT_TRUE(motif.taxon.empty());
    EXPECT_TRUE(motif.motifID.empty());
}

}  // namespace
}  // namespace varnolix
