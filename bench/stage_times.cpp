#include <omp.h>
#include <sys/resource.h>

#include <functional>
#include <iomanip>
#include <iostream>
#include <string>
#include <string_view>

#include "input/stages.h"
#include "rank/input_ranking.h"
#include "rank/memory_plan.h"
#include "rank/stages.h"
#include "report/stages.h"
#include "run/runDialogue.h"
#include "run/shared_records.h"
#include "scan/pair_records.h"
#include "scan/pair_scan.h"
#include "scan/stages.h"

// stage_times: reads the answers of the dialogue and runs the stages between input motifs as the program does (text
// reports, no tree, no merging, no collection). For each stage it prints a line to standard error: name, seconds and
// processor seconds.

namespace {

using namespace varnolix;

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

struct Spent {
    double seconds = 0;
    double processorSeconds = 0;

    Spent& operator+=(const Spent& other) {
        seconds += other.seconds;
        processorSeconds += other.processorSeconds;
        return *this;
    }
};

void print(std::string_view name, const Spent& spent) {
    std::cerr << std::fixed << std::setprecision(4) << name << '\t' << spent.seconds << '\t' << spent.processorSeconds
              << '\n';
}

void printRatio(std::string_view name, const Spent& whole, const Spent& part) {
    print(name, {whole.seconds / part.seconds, whole.processorSeconds / part.processorSeconds});
}

Spent timed(std::string_view name, const std::function<void()>& stage) {
    const double start = omp_get_wtime();
    const double processorStart = processorSeconds();
    stage();
    const Spent spent{omp_get_wtime() - start, processorSeconds() - processorStart};
    print(name, spent);
    return spent;
}

/// Scores all pairs but keeps nothing. Returns the number of alignments that a run would keep.
std::size_t bareKernel() {
    const PairScan scan(Datasets, Datasets, {overlap, maxScore, simCutoff});
    std::size_t kept = 0;
#pragma omp parallel reduction(+ : kept)
    {
        std::vector<ScoredShift> row;
        KernelScratch scratch;
#pragma omp for schedule(dynamic)
        for (std::size_t left = 0; left < Datasets.size(); ++left) {
            row.clear();
            scan.scanPartners(left, left + 1, Datasets.size(), OuterMotif::left, row, scratch);
            kept += row.size();
        }
    }
    return kept;
}

/// The ranking alone. The program ranks and reports in one stage.
void rankOnly() {
    rankInput(inputRecords(DatasetsCombinedScoreLists), Datasets, {numBestMatches, numFile > 1, false, false});
}

void writeReports() {
    writeHeaderGlobalText();
    if (outputFileType == "All") {
        writeHeaderText();
        writeHeaderTextWithoutMotif();
    }
    getResultsList();
    writeFooterGlobalText();
    if (outputFileType == "All") {
        writeFooterText();
        writeFooterTextWithoutMotif();
    }
}

long peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1000;
}

}  // namespace

int main() {
    runDialogue();
    timed("reading", [] { readInput(FileNameType); });
    // Timed both before and after the stages, as the load of the machine may change.
    std::size_t kept = 0;
    Spent kernel = timed("bare kernel", [&] { kept = bareKernel(); });
    Spent scanAndRanking = timed("plan", planInputScan);
    scanAndRanking += timed("forward scan", forwardScan);
    scanAndRanking += timed("backward scan", backwardScan);
    scanAndRanking += timed("bounds", getMaxScores);
    scanAndRanking += timed("keys", calculateSumScoresCompare);
    scanAndRanking += timed("ranking", rankOnly);
    print("scan and ranking", scanAndRanking);
    timed("ranking and reports", writeReports);
    const long peak = peakMegabytes();
    DatasetsCombinedScoreLists = {};
    kernel += timed("bare kernel", [&] { kept = bareKernel(); });
    kernel = {kernel.seconds / 2, kernel.processorSeconds / 2};
    const Spent keepingKernel = timed("kernel, alignments kept", [] {
        scannedPairs(Datasets, Datasets, allPlaces(Datasets.size()), {overlap, maxScore, simCutoff}, 0);
    });
    printRatio("scan and ranking / bare kernel", scanAndRanking, kernel);
    printRatio("scan and ranking / kernel, alignments kept", scanAndRanking, keepingKernel);
    std::cerr << "motifs\t" << Datasets.size() << '\n'
              << "kept alignments\t" << kept << '\n'
              << "motifs in a block\t" << heldMotifs << '\n'
              << "peak memory, MB\t" << peak << '\n';
    return 0;
}
