#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <string>
#include <vector>

#include "against_plain_form.h"
#include "motif_source.h"
#include "rank/input_ranking.h"
#include "report/matched_motif.h"
#include "report/report_file.h"
#include "report/stages.h"
#include "report/text/result_text.h"
#include "report/text/text_columns.h"
#include "run/shared_records.h"
#include "scan/pair_records.h"
#include "scratch_folder.h"

// Writing 10 best matches of every motif to the full text report. The argument is the number of motifs. Both forms open
// the report for each list, but the plain form formats every matrix again and writes every part to the stream.

namespace {

using namespace varnolix;

constexpr double cutoff = 0.75;
constexpr int mostMatches = 10;

void writeMatrix(std::ostream& stream, const Matrix& matrix) {
    for (const Column& column : matrix) {
        for (const double value : column) stream << std::left << std::setw(12) << std::fixed << value;
        stream << std::endl;
    }
}

void writePlainly(std::ostream& stream, const dataCombinedScore& record, long id) {
    const MatchedMotif match = matchedMotif(record, id, Datasets, Datasets);
    const int nameWidth = motifNameLength + 10;
    stream << std::left << std::setw(15) << "Dataset #" << std::setw(15) << "Motif ID" << std::setw(nameWidth)
           << "Motif name" << std::setw(40) << "Matching format of first motif" << std::setw(40)
           << "Matching format of second motif" << std::setw(15) << "Direction" << std::setw(15) << "Position #"
           << std::setw(15) << "# of overlap" << std::setw(15) << "Similarity score" << std::endl;
    stream << std::setw(15) << match.motif.datasetNum << std::setw(15) << match.motif.matrixID << std::setw(nameWidth)
           << match.motif.motifName << std::setw(40) << formatText(record.matchingFormat1) << std::setw(40)
           << formatText(record.matchingFormat2) << std::setw(15) << directionText(record.direction) << std::setw(15)
           << record.position << std::setw(15) << record.overlap << std::setw(15) << record.combinedScore << std::endl
           << std::endl;
    stream << "Original motif" << std::endl;
    writeMatrix(stream, match.motif.matrix);
    stream << "Consensus sequence: " << match.motif.consensus << std::endl << std::endl;
    stream << "Reverse complement motif" << std::endl;
    writeMatrix(stream, match.motif.revCompMatrix);
    stream << "Consensus sequence: " << match.motif.revCompConsensus << std::endl;
    stream << std::endl << "Alignment:" << std::endl << match.lines.other << std::endl << match.lines.own << std::endl;
    stream << std::endl << std::string(ruleWidth, '-') << std::endl;
}

std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// An item is a record.
void reportWriting(benchmark::State& state) {
    const bench::ScratchFolder folder;
    Datasets = bench::motifsOfCounts(bench::countMatrices(static_cast<std::size_t>(state.range(0))));
    motifNameLength = static_cast<int>(Datasets.back().motifName.size());
    PairRecords pairs = scannedPairs(Datasets, Datasets, allPlaces(Datasets.size()), {overlap, maxScore, cutoff}, 0);
    pairs.isForwardScanned = pairs.isBackwardScanned = pairs.isScored = true;
    const RecordLists lists =
        rankInput(inputRecords(pairs), Datasets, {mostMatches, false, false, false}).local.bestMatches;
    std::size_t records = 0;
    for (const auto& list : lists) records += list.size();

    outputFileLocation = folder.file("report.txt");
    const std::string plainPath = folder.file("plain.txt");
    const auto write = [&] {
        DatasetsMatrixText.clear();
        myfile = std::ofstream();
        openOutput(myfile, outputFileLocation);
        myfile.close();
        for (std::size_t list = 0; list < lists.size(); ++list) {
            WriteTopResultsList(lists[list], eachMotifMode, static_cast<long>(list) + 1);
        }
    };
    const auto writeAllPlainly = [&] {
        std::ofstream(plainPath).close();
        std::ofstream stream;
        for (std::size_t list = 0; list < lists.size(); ++list) {
            stream.open(plainPath, std::ios::app);
            for (const dataCombinedScore& record : lists[list]) {
                writePlainly(stream, record, static_cast<long>(list) + 1);
            }
            stream.close();
        }
    };
    bench::againstPlainForm(state, static_cast<double>(records), write, writeAllPlainly);
    const auto bytes = static_cast<double>(std::filesystem::file_size(outputFileLocation));
    state.counters["records/s"] = 1e9 / state.counters["ns/item"];
    state.counters["MB/s"] = state.counters["records/s"] * bytes / static_cast<double>(records) / 1e6;
    if (contents(outputFileLocation) != contents(plainPath)) state.SkipWithError("text differs from the plain form's");
}
BENCHMARK(reportWriting)->Arg(500)->Arg(2000)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
