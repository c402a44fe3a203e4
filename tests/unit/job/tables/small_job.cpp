#include "job/tables/small_job.h"

#include <algorithm>

#include "rank/memory_plan.h"
#include "rank/stages.h"
#include "scan/stages.h"

namespace varnolix::testing {

namespace {

std::vector<job::JobMotif> listed(const std::vector<data>& motifs, const std::string& word) {
    std::vector<job::JobMotif> list;
    for (const data& motif : motifs) {
        const std::string number = std::to_string(motif.matrixID);
        job::JobMotif& added = list.emplace_back();
        added.motif.id = word + " " + number;
        added.motif.name = "second " + number;
        added.motif.line = 10;
        for (const Column& column : motif.matrix) {
            job::NumberColumn& numbers = added.motif.columns.emplace_back();
            std::transform(column.begin(), column.end(), numbers.begin(),
                           [](double value) { return std::to_string(value); });
        }
        added.reportName = motif.motifName;
        added.file = "file";
        added.dataset = motif.datasetNum;
        added.number = motif.motifNum;
    }
    return list;
}

}  // namespace

void SmallJobTest::answer() const {
    resetGlobals();
    outputPath = folder();
    nameOutputFiles();
    numFile = 2;
    numTopMotif = 3;
    numBestMatches = 5;
    simCutoff = 0.6;
    outputFileType = "All";
    outputFileFormat = "Text";
    motifCluster = "N";
    combinedMotifFlag = "N";
    keepsRankedLists = true;
}

void SmallJobTest::compare() {
    planInputScan();
    forwardScan();
    backwardScan();
    getMaxScores();
    calculateSumScoresCompare();
    getResultsList();
    if (DatabaseDatasets.empty()) return;
    planCollectionScan();
    forwardScanDatabase();
    backwardScanDatabase();
    getMaxScoresDatabase();
    calculateSumScoresCompareDatabase();
    getDatabaseResultsList();
    forwardScanDatabaseGlobal();
    backwardScanDatabaseGlobal();
    getMaxScoresDatabaseGlobal();
    calculateSumScoresCompareDatabaseGlobal();
    getDatabaseGlobalResultsList();
}

job::JobSources SmallJobTest::sourcesOfMotifs() {
    job::JobSources made;
    int datasets = 0;
    for (const data& motif : Datasets) datasets = std::max(datasets, motif.datasetNum);
    for (int number = 1; number <= datasets; ++number) made.datasets.push_back({"set " + std::to_string(number), ""});
    made.motifs = listed(Datasets, "motif");
    made.references = listed(DatabaseDatasets, "reference");
    if (!DatabaseDatasets.empty()) made.collection = "the collection";
    return made;
}

}  // namespace varnolix::testing
