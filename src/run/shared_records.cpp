#include "run/shared_records.h"

#include "run/system/outside_tool.h"

namespace varnolix {

int dNum = 1;
int mNum = 1;
int matrixIDNum = 1;
int overlap = 4;
double maxScore = 1.0;
int motifNameLength = 0;
std::size_t heldMotifs = 0;
double maxSumScoreCompare = 0;

double simCutoff = 0;
int numFile = 0, numTopMotif = 0, numBestMatches = 0, numThread = 0, maxThreadsAvailable = 0, inputFileFormatNum = 0;
std::string simCutoffInput, numFileInput, numTopMotifInput, numBestMatchesInput, numThreadInput;
std::string inputFileFormat, DBNameInput;
std::string inputPath, outputPath, inputFilename, DBName;
std::string outputFileType, outputFileFormat;
std::string motifCluster, combinedMotifFlag;
std::string jobID;

double start = 0, stop = 0, wtime = 0;
std::vector<StageTime> stageTimes;

std::string outputFile = "Results.txt";
std::string outputFileWithoutMotif = "Results_Without_Motif_Details.txt";
std::string outputGlobalMatchingFile = "Results_Global_Matching.txt";
std::string outputHTMLFile = "HTML_Results.html";
std::string outputHTMLGlobalMatchingFile = "HTML_Global_Matching_Results.html";
std::string outputDatabaseMatchingFile = "Results_Database_Matching.txt";
std::string outputDatabaseMatchingFileWithoutMotif = "Results_Database_Matching_Without_Motif_Details.txt";
std::string outputDatabaseMatchingHTMLFile = "HTML_Results_Database_Matching.html";
std::string outputDatabaseMatchingGlobalMatchingFile = "Results_Database_Matching_Global_Matching.txt";
std::string outputDatabaseMatchingGlobalMatchingHTMLFile = "HTML_Results_Database_Matching_Global_Matching.html";
std::string outputCombinedMatrixGlobalFile = "Results_Combined_Motifs_Global_Matching.txt";
std::string outputCombinedMatrixGlobalAndLocalFile = "Results_Combined_Motifs_Global_and_Local_Matching.txt";
std::string outputCombinedMatrixBestMatchesFile = "Results_Combined_Motifs_Best_Matches.txt";
std::string outputPhylogeneticTreeHTMLFile = "Phylogenetic_Tree.html";
std::string outputPhylogeneticTreeGlobalHTMLFile = "Global_Matching_Phylogenetic_Tree.html";

std::string outputFileLocation;
std::string outputFileWithoutMotifLocation;
std::string outputFileGlobalMatchingLocation;
std::string outputHTMLFileLocation;
std::string outputHTMLGlobalMatchingFileLocation;
std::string outputDatabaseMatchingFileLocation;
std::string outputDatabaseMatchingFileWithoutMotifLocation;
std::string outputDatabaseMatchingHTMLFileLocation;
std::string outputDatabaseMatchingGlobalMatchingFileLocation;
std::string outputDatabaseMatchingGlobalMatchingHTMLFileLocation;
std::string outputCombinedMatrixGlobalFileLocation;
std::string outputCombinedMatrixGlobalAndLocalFileLocation;
std::string outputCombinedMatrixBestMatchesFileLocation;
std::string outputPhylogeneticTreeHTMLFileLocation;
std::string outputPhylogeneticTreeGlobalHTMLFileLocation;

std::ofstream myfile;
std::ofstream myfileWithoutMotif;
std::ofstream myGlobalMatchingFile;
std::ofstream myHTMLFile;
std::ofstream myHTMLGlobalMatchingFile;
std::ofstream myDatabaseMatchingFile;
std::ofstream myDatabaseMatchingFileWithoutMotif;
std::ofstream myDatabaseMatchingHTMLFile;
std::ofstream myDatabaseMatchingGlobalMatchingFile;
std::ofstream myDatabaseMatchingGlobalMatchingHTMLFile;
std::ofstream myCombinedMatrixGlobalFile;
std::ofstream myCombinedMatrixGlobalAndLocalFile;
std::ofstream myCombinedMatrixBestMatchesFile;
std::ofstream myPhylogeneticTreeFile;
std::ofstream myPhylogeneticTreeGlobalMatchingFile;

data Matrices;
fileNameAndType InputFiles;
combinedMatrices mergedMatrix;

std::vector<fileNameAndType> FileNameType;
std::vector<data> Datasets, DatabaseDatasets;
std::vector<std::string> DatasetsMatrixText, DatabaseDatasetsMatrixText;
PairRecords DatasetsCombinedScoreLists, DatasetsCombinedScoreDatabaseLists, DatasetsCombinedScoreDatabaseGlobalLists;
std::vector<maxScores> maxScoresList, maxScoresDatabaseList, maxScoresDatabaseGlobalList;
std::vector<commonBestMatches> commonBestScoreResultList, globalMatchingScoreResultList;
RecordLists topGlobalMatchingResults, topGlobalAndLocalMatchingResults, topBestMatchesResults;
std::vector<std::vector<combinedMatrices>> mergedMotifGlobalMatching, mergedMotifGlobalAndLocalMatching;
std::vector<std::vector<combinedMatrices>> mergedMotifBestMatches;
bool keepsRankedLists = false;
std::vector<RankedList> rankedLists;
std::vector<combinedMatrices> mergedMotifList, mergedMotifListGlobalAndLocal, mergedMotifListBestMatches;
DistanceTable distanceMatrix, distanceMatrixGlobal;

std::vector<std::string> pagesToConvert;
RunningTools runningTools;

}  // namespace varnolix
