#include "job/run/answers.h"

#include <omp.h>

#include <algorithm>
#include <cstdlib>

#include "run/checks.h"
#include "run/collections.h"
#include "run/output_names.h"
#include "run/shared_records.h"

namespace varnolix::job {

namespace {

constexpr const char* unspecifiedFormat = "10";
constexpr int mostOneDigitThreads = 9;

/// The number of a collection in the menu of the dialogue, which ends with "None".
std::string menuNumber(const std::string& name) {
    const auto* found = std::find_if(std::begin(collections), std::end(collections),
                                     [&](const Collection& collection) { return collection.name == name; });
    return std::to_string(found - std::begin(collections) + 1);
}

/// The dialogue's word for an option's value.
std::string wordOf(const std::string& value) {
    if (value == "all") return "All";
    if (value == "global-only") return "Global-Only";
    if (value == "text") return "Text";
    return value == "html" ? "HTML" : "PDF";
}

}  // namespace

void fillAnswers(const RunOptions& options, const std::string& folder, const JobSources& sources,
                 const std::string& collection) {
    numFile = static_cast<int>(sources.datasets.size());
    numTopMotif = options.topMotifs;
    numBestMatches = options.bestMatches;
    simCutoffInput = options.cutoff;
    simCutoff = std::strtod(options.cutoff.c_str(), nullptr);
    maxThreadsAvailable = omp_get_max_threads();
    numThread = options.threads == 0 ? maxThreadsAvailable : std::min(options.threads, maxThreadsAvailable);
    omp_set_num_threads(numThread);
    // The dialogue takes no thread count with a 0 in it; the results are the same for every count.
    numThreadInput = std::to_string(numThread);
    if (!checkNumThreads(numThreadInput)) numThreadInput = std::to_string(mostOneDigitThreads);
    numFileInput = std::to_string(numFile);
    numTopMotifInput = std::to_string(numTopMotif);
    numBestMatchesInput = std::to_string(numBestMatches);
    inputPath = folder + "/motifs/";
    for (const JobDataset& dataset : sources.datasets) {
        fileNameAndType file;
        file.fileName = dataset.fileName;
        file.fileFormat = std::atoi(unspecifiedFormat);
        file.datasetNum = static_cast<int>(FileNameType.size()) + 1;
        FileNameType.push_back(file);
    }
    DBName = collection;
    DBNameInput = menuNumber(collection);
    motifCluster = options.drawsTree ? "Y" : "N";
    combinedMotifFlag = options.merges ? "Y" : "N";
    outputFileType = wordOf(options.type);
    outputFileFormat = wordOf(options.format);
    identifyJob();
}

std::string answersText() {
    std::string text;
    const auto add = [&](const std::string& answer) { text += answer + "\n"; };
    for (const std::string* answer :
         {&numFileInput, &numTopMotifInput, &numBestMatchesInput, &simCutoffInput, &numThreadInput, &inputPath}) {
        add(*answer);
    }
    for (const fileNameAndType& file : FileNameType) {
        add(file.fileName);
        add(unspecifiedFormat);
    }
    for (const std::string* answer :
         {&DBNameInput, &motifCluster, &combinedMotifFlag, &outputFileType, &outputFileFormat, &outputPath}) {
        add(*answer);
    }
    return text;
}

}  // namespace varnolix::job
