#include "support/run_fixture.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace varnolix::testing {

namespace {

void resetSettings() {
    dNum = 1;
    mNum = 1;
    matrixIDNum = 1;
    overlap = 4;
    maxScore = 1.0;
    motifNameLength = 0;
    maxSumScoreCompare = 0;
    simCutoff = 0;
    for (int* number :
         {&numFile, &numTopMotif, &numBestMatches, &numThread, &maxThreadsAvailable, &inputFileFormatNum}) {
        *number = 0;
    }
    for (std::string* text : {&simCutoffInput, &numFileInput, &numTopMotifInput, &numBestMatchesInput, &numThreadInput,
                              &inputFileFormat, &DBNameInput, &inputPath, &outputPath, &inputFilename, &DBName,
                              &outputFileType, &outputFileFormat, &motifCluster, &combinedMotifFlag, &jobID}) {
        text->clear();
    }
    start = stop = wtime = 0;
    keepsRankedLists = false;
}

void resetOutputNames() {
    outputFile = "Results.txt";
    outputFileWithoutMotif = "Results_Without_Motif_Details.txt";
    outputGlobalMatchingFile = "Results_Global_Matching.txt";
    outputHTMLFile = "HTML_Results.html";
    outputHTMLGlobalMatchingFile = "HTML_Global_Matching_Results.html";
    outputDatabaseMatchingFile = "Results_Database_Matching.txt";
    outputDatabaseMatchingFileWithoutMotif = "Results_Database_Matching_Without_Motif_Details.txt";
    outputDatabaseMatchingHTMLFile = "HTML_Results_Database_Matching.html";
    outputDatabaseMatchingGlobalMatchingFile = "Results_Database_Matching_Global_Matching.txt";
    outputDatabaseMatchingGlobalMatchingHTMLFile = "HTML_Results_Database_Matching_Global_Matching.html";
    outputCombinedMatrixGlobalFile = "Results_Combined_Motifs_Global_Matching.txt";
    outputCombinedMatrixGlobalAndLocalFile = "Results_Combined_Motifs_Global_and_Local_Matching.txt";
    outputCombinedMatrixBestMatchesFile = "Results_Combined_Motifs_Best_Matches.txt";
    outputPhylogeneticTreeHTMLFile = "Phylogenetic_Tree.html";
    outputPhylogeneticTreeGlobalHTMLFile = "Global_Matching_Phylogenetic_Tree.html";
    for (std::string* location :
         {&outputFileLocation, &outputFileWithoutMotifLocation, &outputFileGlobalMatchingLocation,
          &outputHTMLFileLocation, &outputHTMLGlobalMatchingFileLocation, &outputDatabaseMatchingFileLocation,
          &outputDatabaseMatchingFileWithoutMotifLocation, &outputDatabaseMatchingHTMLFileLocation,
          &outputDatabaseMatchingGlobalMatchingFileLocation, &outputDatabaseMatchingGlobalMatchingHTMLFileLocation,
          &outputCombinedMatrixGlobalFileLocation, &outputCombinedMatrixGlobalAndLocalFileLocation,
          &outputCombinedMatrixBestMatchesFileLocation, &outputPhylogeneticTreeHTMLFileLocation,
          &outputPhylogeneticTreeGlobalHTMLFileLocation}) {
        location->clear();
    }
}

void resetStreams() {
    for (std::ofstream* stream :
         {&myfile, &myfileWithoutMotif, &myGlobalMatchingFile, &myHTMLFile, &myHTMLGlobalMatchingFile,
          &myDatabaseMatchingFile, &myDatabaseMatchingFileWithoutMotif, &myDatabaseMatchingHTMLFile,
          &myDatabaseMatchingGlobalMatchingFile, &myDatabaseMatchingGlobalMatchingHTMLFile, &myCombinedMatrixGlobalFile,
          &myCombinedMatrixGlobalAndLocalFile, &myCombinedMatrixBestMatchesFile, &myPhylogeneticTreeFile,
          &myPhylogeneticTreeGlobalMatchingFile}) {
        *stream = std::ofstream();
    }
}

template <class... Globals>
void startAnew(Globals&... globals) {
    ((globals = Globals()), ...);
}

}  // namespace

void resetGlobals() {
    resetSettings();
    resetOutputNames();
    resetStreams();
    startAnew(Matrices, InputFiles, mergedMatrix);
    startAnew(FileNameType, Datasets, DatabaseDatasets, DatasetsMatrixText, DatabaseDatasetsMatrixText);
    startAnew(DatasetsCombinedScoreLists, DatasetsCombinedScoreDatabaseLists, DatasetsCombinedScoreDatabaseGlobalLists);
    heldMotifs = 0;
    startAnew(maxScoresList, maxScoresDatabaseList, maxScoresDatabaseGlobalList);
    startAnew(commonBestScoreResultList, globalMatchingScoreResultList);
    startAnew(topGlobalMatchingResults, topGlobalAndLocalMatchingResults, topBestMatchesResults);
    startAnew(mergedMotifGlobalMatching, mergedMotifGlobalAndLocalMatching, mergedMotifBestMatches);
    startAnew(rankedLists, stageTimes, pagesToConvert);
    startAnew(mergedMotifList, mergedMotifListGlobalAndLocal, mergedMotifListBestMatches);
    startAnew(distanceMatrix, distanceMatrixGlobal);
    startAnew(keepsRankedLists, rankedLists, stageTimes);
}

FolderTest::FolderTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "varnolix-unit-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder: " + pattern);
    folder_ = pattern;
}

FolderTest::~FolderTest() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void FolderTest::write(const std::string& name, std::string_view text) const {
    std::ofstream file(folder_ / name, std::ios::binary);
    file << text;
    ASSERT_TRUE(file.flush().good()) << name;
}

std::string FolderTest::read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

Block blockOf(std::initializer_list<std::string_view> lines) {
    Block block;
    for (const std::string_view line : lines) block.push_back(splitTokens(line));
    return block;
}

data motifOfMatrix(int matrixID, Matrix matrix, int datasetNum, std::string name) {
    data motif;
    motif.matrixID = matrixID;
    motif.motifName = name.empty() ? "motif" + std::to_string(matrixID) : std::move(name);
    motif.datasetNum = datasetNum;
    motif.motifNum = matrixID;
    motif.matrix = std::move(matrix);
    deriveForms(motif);
    return motif;
}

data motifOfText(int matrixID, std::string_view letters, int datasetNum, std::string name) {
    const auto has = [](std::string_view set, char letter) { return set.find(letter) != std::string_view::npos; };
    Matrix matrix;
    for (const char letter : letters) {
        const std::array<bool, 4> bases = {has("AMRWVHDN", letter), has("CMSYVHBN", letter), has("GRSKVDBN", letter),
                                           has("TWYKHDBN", letter)};
        const double share = 1.0 / (int{bases[0]} + int{bases[1]} + int{bases[2]} + int{bases[3]});
        Column column{};
        for (std::size_t base = 0; base < bases.size(); ++base) column[base] = bases[base] ? share : 0.0;
        matrix.push_back(column);
    }
    return motifOfMatrix(matrixID, std::move(matrix), datasetNum, std::move(name));
}

}  // namespace varnolix::testing
