#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "run/scored_shift.h"

// The record types of the program, and its globals, whose start values are in shared_records.cpp. Stages read their
// settings and input from here and leave their results here. The algorithms that they call (recognising and parsing
// blocks, scoring, ranking, merging, drawing) take parameters instead and can be tested without globals. Thin readers
// and writers in between, which append a motif or print a report, do use them.

namespace varnolix {

/// One position of a motif: the values of A, C, G and T, in this order.
using Column = std::array<double, 4>;
/// The positions of a motif, from first to last.
using Matrix = std::vector<Column>;

enum class Direction : std::uint32_t { forward, backward };
enum class MatchingFormat : std::uint32_t { originalMotif, reverseComplement };
/// `yes` ("Y") if the motif of the outer loop is the one stored first.
enum class PrimaryFlag : std::uint32_t { empty, yes };

/// One input or reference motif.
struct data {
    int matrixID = 0;  ///< 1-based, counted over all files of the run: Datasets[k].matrixID is k + 1
    std::string motifName;
    std::string taxon;    ///< reference motifs only
    std::string motifID;  ///< catalogue identifier, reference motifs only
    int datasetNum = 0;   ///< 1-based number of the input file; 1 for a reference collection
    int motifNum = 0;     ///< 1-based number in its file
    Matrix matrix;        ///< frequencies: readers divide each position by its sum (see readers.h for exceptions)
    Matrix revCompMatrix;
    std::string consensus;
    std::string revCompConsensus;
};

/// One input file.
struct fileNameAndType {
    std::string fileName;  ///< as typed, relative to inputPath
    int fileFormat = 0;    ///< as typed, 1 to 10; unused, because blocks are recognised by their shape
    int motifCount = 0;
    int datasetNum = 0;
};

/// One cell of a column that is being sorted.
struct tempArray {
    double value = 0;
    int baseIndex = 0;  ///< 0 to 3 for A, C, G, T
};

/// One scored alignment of a pair of motifs. A big run holds tens of millions of these, so they contain no strings:
/// names and dataset numbers are looked up by id (run/record_fields.h).
struct dataCombinedScore {
    std::int32_t matrixID1;  ///< the motif stored first: the one that slides
    std::int32_t matrixID2;
    std::uint32_t position : 30;  ///< 1-based column of the fixed motif; backward records count it from the end
    Direction direction : 1;
    PrimaryFlag primaryFlag : 1;
    std::uint32_t overlap : 30;  ///< number of columns compared
    MatchingFormat matchingFormat1 : 1;
    MatchingFormat matchingFormat2 : 1;
    double similarityScore;  ///< best of the four orientation scores
    double combinedScore;    ///< sort key, lower is better; the reports print it under "Similarity score"
};
static_assert(sizeof(dataCombinedScore) == 32);

/// Records grouped by motif: element m - 1 belongs to the motif with matrixID m.
using RecordLists = std::vector<std::vector<dataCombinedScore>>;

/// The highest values of one motif, taken over the records that name it. The sort keys are measured against them.
struct maxScores {
    int matrixID = 0;  ///< 0 until a record names the motif
    double maxScore = 0.0;
    int maxOverlap = 0;
    int halfOverlapPlus2 = 0;
};

class PairScan;

/// The records of the pairs of two lists of motifs, kept as the alignments that they are made of: an alignment takes a
/// fifth of the memory of its records. The scans fill this, and the ranking makes the few records that it keeps
/// (rank/record_source). The left motifs are taken in blocks, so that the alignments of a big run fit the memory; all
/// but big runs have one block.
struct PairRecords {
    std::shared_ptr<const PairScan> scan;        ///< both lists, laid out for scoring
    std::vector<std::size_t> chosen;             ///< places of the left motifs to compare, ascending
    std::size_t blockSize = 0;                   ///< left motifs whose alignments are held at a time
    std::size_t first = 0;                       ///< place of the first left motif of the block that is held
    std::vector<std::vector<ScoredShift>> rows;  ///< one for each left motif of that block, by partner and shift
    bool isForwardScanned = false;               ///< whether forward records are made of the alignments
    bool isBackwardScanned = false;              ///< whether backward records are
    std::vector<maxScores>* bounds = nullptr;    ///< takes the bounds of each motif when its records are listed
    bool isScored = false;                       ///< whether records get their combinedScore
};

/// One ranked motif.
struct commonBestMatches {
    int matrixID = 0;
    double sumCombinedScore = 0.0;  ///< over the motif's best matches
};

/// The ranked lists of a job, as the sections of its reports: the top motifs of the matching across files, the top
/// motifs of all matching, and every motif that has a match; then against the collection: every motif that has a match
/// there, and the top motifs of the matching across files.
enum class ListKind { topGlobal, significant, eachMotif, collection, collectionGlobal };

/// One motif of a ranked list, with its matches in the order of the report.
struct RankedList {
    ListKind kind;
    int matrixID;
    std::vector<dataCombinedScore> matches;
};

/// How long a part of the job took.
struct StageTime {
    const char* stage;
    double seconds;
};

/// One step of merging a group of motifs.
struct combinedMatrices {
    int matrixID1 = 0;
    int matrixID2 = 0;
    std::string motifName1;
    std::string motifName2;
    MatchingFormat matchingFormat1 = MatchingFormat::originalMotif;
    MatchingFormat matchingFormat2 = MatchingFormat::originalMotif;
    PrimaryFlag primaryFlag = PrimaryFlag::empty;
    Direction direction = Direction::forward;
    int position = 0;  ///< 1-based, as in dataCombinedScore
    int overlap = 0;
    double combinedScore = 0.0;
    Matrix matrix1;
    Matrix matrix2;
    Matrix combinedMatrix;
    std::string mergedFlag;  ///< "Y" for a merged step, "N" for a member that was left out
    std::string alignedMotif1;
    std::string alignedMotif2;
};

/// Number of pairs of this many motifs: the cells of one half of a symmetric table, without the diagonal.
constexpr std::size_t pairsOf(std::size_t motifs) {
    return motifs == 0 ? 0 : motifs * (motifs - 1) / 2;
}

/// The cell of two different motifs, given by their 0-based places in either order. The rows of the lower half follow
/// one another.
constexpr std::size_t pairCell(std::size_t motif, std::size_t other) {
    return pairsOf(std::max(motif, other)) + std::min(motif, other);
}

/// The lowest combinedScore of every pair of motifs, for the tree.
struct DistanceTable {
    std::vector<std::string> labels;   ///< motif names; the writer of the table adds letter and number
    std::vector<double> lowestScores;  ///< one half of the table, see pairCell(); infinity for a pair without a record
    double unmatched = 0.0;            ///< printed in place of infinity; above every score of the run
};

// Counters and settings.

extern int dNum;                   ///< number of the input file being read
extern int mNum;                   ///< number of the next motif in that file
extern int matrixIDNum;            ///< id of the next motif of the run
extern int overlap;                ///< minimum number of overlapping columns in an alignment
extern double maxScore;            ///< score of a cell in which two motifs agree perfectly
extern int motifNameLength;        ///< length of the longest name of an input motif
extern std::size_t heldMotifs;     ///< input motifs whose alignments are held at a time; 0 for all of them
extern double maxSumScoreCompare;  ///< largest combinedScore seen; DistanceTable::unmatched lies above it

// Answers of the dialogue, as values and as typed.

extern double simCutoff;
extern int numFile, numTopMotif, numBestMatches, numThread, maxThreadsAvailable, inputFileFormatNum;
extern std::string simCutoffInput, numFileInput, numTopMotifInput, numBestMatchesInput, numThreadInput;
extern std::string inputFileFormat, DBNameInput;
extern std::string inputPath, outputPath, inputFilename, DBName;
extern std::string outputFileType;     ///< "Global-Only" or "All"
extern std::string outputFileFormat;   ///< "Text", "HTML", "PDF" or "All"
extern std::string motifCluster;       ///< "Y": draw the tree
extern std::string combinedMotifFlag;  ///< "Y": merge similar motifs
extern std::string jobID;              ///< prefix of every output name

// Timing, in seconds.

extern double start, stop, wtime;

// Names, full paths and streams of the output files. jobID is put in front of the names once it is known. A stream is
// closed between its writers, but its notation (fixed or general) carries over from one to the next.

extern std::string outputFile, outputFileWithoutMotif, outputGlobalMatchingFile;
extern std::string outputHTMLFile, outputHTMLGlobalMatchingFile;
extern std::string outputDatabaseMatchingFile, outputDatabaseMatchingFileWithoutMotif, outputDatabaseMatchingHTMLFile;
extern std::string outputDatabaseMatchingGlobalMatchingFile, outputDatabaseMatchingGlobalMatchingHTMLFile;
extern std::string outputCombinedMatrixGlobalFile, outputCombinedMatrixGlobalAndLocalFile;
extern std::string outputCombinedMatrixBestMatchesFile;
extern std::string outputPhylogeneticTreeHTMLFile, outputPhylogeneticTreeGlobalHTMLFile;

extern std::string outputFileLocation, outputFileWithoutMotifLocation, outputFileGlobalMatchingLocation;
extern std::string outputHTMLFileLocation, outputHTMLGlobalMatchingFileLocation;
extern std::string outputDatabaseMatchingFileLocation, outputDatabaseMatchingFileWithoutMotifLocation;
extern std::string outputDatabaseMatchingHTMLFileLocation, outputDatabaseMatchingGlobalMatchingFileLocation;
extern std::string outputDatabaseMatchingGlobalMatchingHTMLFileLocation;
extern std::string outputCombinedMatrixGlobalFileLocation, outputCombinedMatrixGlobalAndLocalFileLocation;
extern std::string outputCombinedMatrixBestMatchesFileLocation;
extern std::string outputPhylogeneticTreeHTMLFileLocation, outputPhylogeneticTreeGlobalHTMLFileLocation;

extern std::ofstream myfile, myfileWithoutMotif, myGlobalMatchingFile;
extern std::ofstream myHTMLFile, myHTMLGlobalMatchingFile;
extern std::ofstream myDatabaseMatchingFile, myDatabaseMatchingFileWithoutMotif, myDatabaseMatchingHTMLFile;
extern std::ofstream myDatabaseMatchingGlobalMatchingFile, myDatabaseMatchingGlobalMatchingHTMLFile;
extern std::ofstream myCombinedMatrixGlobalFile, myCombinedMatrixGlobalAndLocalFile, myCombinedMatrixBestMatchesFile;
extern std::ofstream myPhylogeneticTreeFile, myPhylogeneticTreeGlobalMatchingFile;

/// How long the parts of the job took, in their order.
extern std::vector<StageTime> stageTimes;

// Single work records. Only the main thread uses them.

extern data Matrices;                  ///< the motif that a reader is filling
extern fileNameAndType InputFiles;     ///< the file that the dialogue is asking about
extern combinedMatrices mergedMatrix;  ///< the current merging step; keeps its last contents between uses

// Lists.

extern std::vector<fileNameAndType> FileNameType;  ///< input files, as answered in the dialogue
extern std::vector<data> Datasets;                 ///< input motifs, in reading order
extern std::vector<data> DatabaseDatasets;         ///< motifs of the reference collection
/// The matrices of the motifs as the text reports print them. Each is formatted when it is first needed.
extern std::vector<std::string> DatasetsMatrixText, DatabaseDatasetsMatrixText;
/// All records of the pairs that the scans met, kept as the alignments that they are made of.
extern PairRecords DatasetsCombinedScoreLists;
extern PairRecords DatasetsCombinedScoreDatabaseLists, DatasetsCombinedScoreDatabaseGlobalLists;
extern std::vector<maxScores> maxScoresList, maxScoresDatabaseList, maxScoresDatabaseGlobalList;
extern std::vector<commonBestMatches> commonBestScoreResultList, globalMatchingScoreResultList;
/// One group of best matches per top motif.
extern RecordLists topGlobalMatchingResults, topGlobalAndLocalMatchingResults, topBestMatchesResults;
extern std::vector<std::vector<combinedMatrices>> mergedMotifGlobalMatching, mergedMotifGlobalAndLocalMatching;
extern std::vector<std::vector<combinedMatrices>> mergedMotifBestMatches;
extern bool keepsRankedLists;  ///< whether the walks that fill the reports fill rankedLists, too
extern std::vector<RankedList> rankedLists;
/// The steps of the group that is being merged.
extern std::vector<combinedMatrices> mergedMotifList, mergedMotifListGlobalAndLocal, mergedMotifListBestMatches;
extern DistanceTable distanceMatrix, distanceMatrixGlobal;

// Outside tools.

extern std::vector<std::string> pagesToConvert;  ///< pages without ".html" and the job's identity, in their order
struct RunningTools;
extern RunningTools runningTools;  ///< the tools that are running, for run/outside_tool and its signal handlers

}  // namespace varnolix
