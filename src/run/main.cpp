#include <omp.h>

#include <iostream>

#include "input/printFileNameTypeCount.h"
#include "input/readInput.h"
#include "input/writeMotifInput.h"
#include "rank/getResultsList.h"
#include "rank/report_passes.h"
#include "report/writeFooterGlobalHTMLOrPDF.h"
#include "report/writeFooterGlobalText.h"
#include "report/writeFooterHTMLOrPDF.h"
#include "report/writeFooterText.h"
#include "report/writeFooterTextWithoutMotif.h"
#include "report/writeHeaderGlobalHTMLOrPDF.h"
#include "report/writeHeaderGlobalText.h"
#include "report/writeHeaderHTMLOrPDF.h"
#include "report/writeHeaderText.h"
#include "report/writeHeaderTextWithoutMotif.h"
#include "run/runDialogue.h"
#include "run/run_text.h"
#include "run/shared_records.h"
#include "scan/backwardScan.h"
#include "scan/calculateSumScoresCompare.h"
#include "scan/forwardScan.h"
#include "scan/getMaxScores.h"

// The whole run, top to bottom. Every stage reads the globals that the stages above it filled and leaves its results in
// globals; there is no way back from a stage to the dialogue.

using namespace varnolix;

namespace {

/// Runs these stages if the condition holds.
template <class... Stages>
void when(bool condition, Stages... stages) {
    if (condition) (stages(), ...);
}

}  // namespace

int main() {
    // All answers are known behind this line, and so are the job's identity and all output names.
    runDialogue();
    const bool isText = writesText();
    const bool isPage = writesPages();
    const bool isAll = outputFileType == "All";

    start = omp_get_wtime();
    std::cout << "\nReading input ...\n";
    // From here on no input motif is added.
    readInput(FileNameType);
    if (Datasets.size() <= 1) endRun("Error: insufficient number of motifs.\n");
    writeMotifInput();
    printFileNameTypeCount();
    std::cout << "Processing input ...\n";

    // All alignments at or above the cutoff, each with its sort key.
    forwardScan();
    backwardScan();
    getMaxScores();
    calculateSumScoresCompare();

    // Every report that the answers ask for exists from here on, with its header.
    when(isText, writeHeaderGlobalText);
    when(isPage, writeHeaderGlobalHTMLOrPDF);
    when(isAll && isText, writeHeaderText, writeHeaderTextWithoutMotif);
    when(isAll && isPage, writeHeaderHTMLOrPDF);

    // Best matches and top motifs are known and reported.
    getResultsList();

    stop = omp_get_wtime();
    wtime = stop - start;

    // The run time is known: the reports are closed by their footers.
    when(isText, writeFooterGlobalText);
    when(isPage, writeFooterGlobalHTMLOrPDF);
    when(isAll && isText, writeFooterText, writeFooterTextWithoutMotif);
    when(isAll && isPage, writeFooterHTMLOrPDF);

    std::cout << "Your output files have been saved in " << outputPath << "\n\nRuntime: " << wtime << " seconds.\n";
    return 0;
}
