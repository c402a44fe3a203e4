#include "run/runJob.h"

#include <omp.h>

#include <iostream>

#include "database/stages.h"
#include "input/stages.h"
#include "merge/stages.h"
#include "rank/memory_plan.h"
#include "rank/stages.h"
#include "report/pdf_conversion.h"
#include "report/report_passes.h"
#include "report/stages.h"
#include "run/run_text.h"
#include "run/settings.h"
#include "run/shared_records.h"
#include "run/system/output_file.h"
#include "scan/stages.h"
#include "tree/stages.h"

// The whole job, top to bottom. Every stage reads the globals that the stages above it filled and leaves its results in
// globals; there is no way back from a stage to the answers.

namespace varnolix {

namespace {

/// Runs these stages if the condition holds.
template <class... Stages>
void when(bool condition, Stages... stages) {
    if (condition) (stages(), ...);
}

/// Notes how long the parts of the job take.
class PartClock {
  public:
    void partEnds(const char* stage) {
        const double now = omp_get_wtime();
        stageTimes.push_back({stage, now - begin_});
        begin_ = now;
    }

  private:
    double begin_ = omp_get_wtime();
};

/// A report, whether the answers ask for it, and the stages that open and close it.
struct ReportFrame {
    bool isAsked;
    void (*writeHeader)();
    void (*writeFooter)();
};

/// Reads the chosen reference collection.
void readDatabase() {
    if (DBName == "transfac") readTransfacDatabase();
    if (DBName.starts_with("jaspar")) readJasparDatabase();
    if (DBName.starts_with("uniprobe")) readUniprobeDatabase();
}

void mergeGroups(const RecordLists& groups, void (*mergeOne)(const std::vector<dataCombinedScore>&)) {
    for (const std::vector<dataCombinedScore>& group : groups) {
        if (!group.empty()) mergeOne(group);
    }
}

}  // namespace

void runJob() {
    const bool isText = writesText();
    const bool isPage = writesPages();
    const bool isDatabase = DBName.size() > 1;
    const bool isTree = motifCluster == "Y";
    const bool isCombined = combinedMotifFlag == "Y";
    const bool isAll = outputFileType == "All";

    PartClock clock;
    start = omp_get_wtime();
    std::cout << "\nReading input ...\n";
    // From here on no input motif is added.
    readInput(FileNameType);
    if (Datasets.size() <= 1) endRun("Error: insufficient number of motifs.\n");
    requireRoom(surelyNeededBytes());
    writeMotifInput();
    printFileNameTypeCount();
    std::cout << "Processing input ...\n";

    clock.partEnds("reading");
    when(isPage, writeMotif);
    clock.partEnds("logos");

    // All alignments at or above the cutoff are known, block by block in a big run. The ranking makes the records that
    // it keeps of them, each with its sort key.
    planInputScan();
    forwardScan();
    backwardScan();
    getMaxScores();
    calculateSumScoresCompare();
    clock.partEnds("scanning");

    // Every report that the answers ask for exists from here on, with its header.
    const ReportFrame frames[] = {
        {isText, writeHeaderGlobalText, writeFooterGlobalText},
        {isText && isDatabase, writeHeaderGlobalTextDatabaseMatch, writeFooterGlobalTextDatabaseMatch},
        {isPage, writeHeaderGlobalHTMLOrPDF, writeFooterGlobalHTMLOrPDF},
        {isPage && isDatabase, writeHeaderGlobalHTMLOrPDFDatabaseMatch, writeFooterGlobalHTMLOrPDFDatabaseMatch},
        {isAll && isText, writeHeaderText, writeFooterText},
        {isAll && isText, writeHeaderTextWithoutMotif, writeFooterTextWithoutMotif},
        {isAll && isPage, writeHeaderHTMLOrPDF, writeFooterHTMLOrPDF},
        {isAll && isDatabase && isText, writeHeaderTextDatabaseMatch, writeFooterTextDatabaseMatch},
        {isAll && isDatabase && isText, writeHeaderTextWithoutMotifDatabaseMatch,
         writeFooterTextWithoutMotifDatabaseMatch},
        {isAll && isDatabase && isPage, writeHeaderHTMLOrPDFDatabaseMatch, writeFooterHTMLOrPDFDatabaseMatch},
        {isCombined, writeHeaderCombinedMatrixGlobal, writeFooterCombinedMatrixGlobal},
        {isCombined && isAll, writeHeaderCombinedMatrixGlobalAndLocal, writeFooterCombinedMatrixGlobalAndLocal},
        {isCombined && isAll, writeHeaderCombinedMatrixBestMatches, writeFooterCombinedMatrixBestMatches},
        {isTree && isPage, writeHeaderPhylogeneticTreeGlobalHTMLOrPDF, writeFooterPhylogeneticTreeGlobalHTMLOrPDF},
        {isTree && isPage && isAll, writeHeaderPhylogeneticTreeHTMLOrPDF, writeFooterPhylogeneticTreeHTMLOrPDF},
    };
    for (const ReportFrame& frame : frames) when(frame.isAsked, frame.writeHeader);

    // Best matches and top motifs are known and reported.
    getResultsList();
    clock.partEnds("ranking");

    // The trees are drawn. The page across files is written once behind each of them.
    when(isGlobalTreeDrawn(), getMotifClusterGlobal);
    when(isTree && numFile > 1 && isPage, writePhylogeneticTreeGlobalHTMLOrPDF);
    when(isLocalTreeDrawn(), getMotifCluster);
    when(isTree && isAll && isPage, writePhylogeneticTreeGlobalHTMLOrPDF, writePhylogeneticTreeHTMLOrPDF);

    clock.partEnds("trees");

    if (isCombined) {
        // Each group is one combined motif, and the combined reports are filled. A run of all types leaves out the
        // report of a ranking without groups.
        if (!isAll || !topGlobalMatchingResults.empty()) {
            mergeGroups(topGlobalMatchingResults, combinedMatrixGlobalMatching);
            WriteCombinedMotifsGlobal();
        }
        if (!topGlobalAndLocalMatchingResults.empty()) {
            mergeGroups(topGlobalAndLocalMatchingResults, combinedMatrixGlobalAndLocalMatching);
            WriteCombinedMotifsGlobalAndLocal();
        }
        if (!topBestMatchesResults.empty()) {
            mergeGroups(topBestMatchesResults, combinedMatrixBestMatches);
            WriteCombinedMotifsBestMatches();
        }
    }

    clock.partEnds("merging");

    if (isDatabase) {
        // The collection is in DatabaseDatasets, and its matches are reported.
        readDatabase();
        clock.partEnds("reading the collection");
        when(isPage, writeDatabaseMotif);
        clock.partEnds("logos of the collection");
        planCollectionScan();
        when(isAll, forwardScanDatabase, backwardScanDatabase, getMaxScoresDatabase, calculateSumScoresCompareDatabase,
             getDatabaseResultsList);
        forwardScanDatabaseGlobal();
        backwardScanDatabaseGlobal();
        getMaxScoresDatabaseGlobal();
        calculateSumScoresCompareDatabaseGlobal();
        getDatabaseGlobalResultsList();
        clock.partEnds("matching the collection");
    }

    stop = omp_get_wtime();
    wtime = stop - start;

    // The run time is known: the reports are closed by their footers.
    for (const ReportFrame& frame : frames) when(frame.isAsked, frame.writeFooter);

    // Pages are finished, so they can be converted: each stage asks for one, and then all are converted.
    if (writesPDF()) {
        convertHTMLToPDFGlobal();
        when(isDatabase, convertHTMLToPDFGlobalDatabaseMatch);
        when(isAll, convertHTMLToPDF);
        when(isAll && isDatabase, convertHTMLToPDFDatabaseMatch);
        when(isTree, convertHTMLToPDFPhylogeneticTreeGlobal);
        when(isTree && isAll, convertHTMLToPDFPhylogeneticTree);
        convertPages();
        clock.partEnds("PDF files");
    }

    std::cout << "Your output files have been saved in " << outputPath << "\n\nRuntime: " << wtime << " seconds.\n";
    checkConsole();
}

}  // namespace varnolix
