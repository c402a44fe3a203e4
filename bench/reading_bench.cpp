#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "against_plain_form.h"
#include "input/input_block.h"
#include "input/stages.h"
#include "motif_source.h"
#include "run/shared_records.h"
#include "scratch_folder.h"

// Reading a file in the Jaspar layout, which is in the disk cache, and deriving all fields of each motif. The argument
// is the size of the file in megabytes. The plain form uses getline and string streams, and can read only this layout.

namespace {

using namespace varnolix;

constexpr double megabyte = 1e6;

/// Writes the same 2,000 motifs repeatedly until the file has the required size.
void writeFile(const std::string& path, double bytes) {
    std::ostringstream text;
    bench::writeJaspar(text, bench::countMatrices(2000), 1);
    std::ofstream file(path);
    for (double written = 0; written < bytes; written += static_cast<double>(text.str().size())) file << text.str();
}

void readPlainly(const std::string& path, std::vector<data>& motifs) {
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line)) {
        data motif;
        motif.motifNum = motif.matrixID = static_cast<int>(motifs.size()) + 1;
        motif.datasetNum = 1;
        motif.motifName = line.substr(1);
        for (std::size_t base = 0; base < 4 && std::getline(file, line); ++base) {
            std::istringstream tokens(line);
            std::string token;
            tokens >> token >> token;
            double count = 0;
            for (std::size_t k = 0; tokens >> count; ++k) {
                if (motif.matrix.size() <= k) motif.matrix.emplace_back();
                motif.matrix[k][base] = count;
            }
        }
        for (Column& column : motif.matrix) column = frequencies(column);
        deriveForms(motif);
        motifs.push_back(motif);
        std::getline(file, line);
    }
}

void startAnew(const std::string& path) {
    dNum = mNum = matrixIDNum = 1;
    Datasets = {};
    inputPath.clear();
    FileNameType = {{path, 4, 0, 1}};
}

bool isSame(const data& left, const data& right) {
    return left.matrixID == right.matrixID && left.motifName == right.motifName && left.matrix == right.matrix &&
           left.revCompMatrix == right.revCompMatrix && left.consensus == right.consensus;
}

/// An item is a byte.
void reading(benchmark::State& state) {
    const bench::ScratchFolder folder;
    const std::string path = folder.file("motifs.txt");
    writeFile(path, static_cast<double>(state.range(0)) * megabyte);
    const auto bytes = static_cast<double>(std::filesystem::file_size(path));
    std::vector<data> plainMotifs;
    const auto read = [&] {
        startAnew(path);
        readInput(FileNameType);
    };
    const auto readAgainPlainly = [&] {
        plainMotifs = {};
        readPlainly(path, plainMotifs);
    };
    bench::againstPlainForm(state, bytes, read, readAgainPlainly);
    state.counters["MB/s"] = 1e9 / megabyte / state.counters["ns/item"];
    state.counters["motifs"] = static_cast<double>(Datasets.size());
    if (!std::equal(Datasets.begin(), Datasets.end(), plainMotifs.begin(), plainMotifs.end(), isSame)) {
        state.SkipWithError("motifs differ from the plain form's");
    }
    Datasets = {};
}
BENCHMARK(reading)->Arg(10)->Arg(100)->UseManualTime()->Iterations(2)->Unit(benchmark::kMillisecond);

}  // namespace
