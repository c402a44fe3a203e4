#include "job/tables/tables.h"

#include <omp.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <numeric>

#include "job/downloads/motif_writers.h"
#include "job/tables/combined_motifs.h"
#include "job/tables/matches_table.h"
#include "job/tables/motifs_table.h"
#include "job/tables/tree_files.h"
#include "run/run_text.h"
#include "run/settings.h"
#include "run/system/output_file.h"
#include "tree/tree_plot.h"

namespace varnolix::job {

namespace {

/// Opens a file of the folder for writing, and closes and checks it in the end.
class OutputFile {
  public:
    explicit OutputFile(std::string path) : path_(std::move(path)) { openOutput(stream_, path_); }
    ~OutputFile() { closeOutput(stream_, path_); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    std::ostream& stream() { return stream_; }

  private:
    std::string path_;
    std::ofstream stream_;
};

void writeText(const std::string& path, const std::string& text) {
    OutputFile(path).stream() << text;
}

JobResults resultsOf(const JobSources& sources) {
    return {sources, Datasets, DatabaseDatasets, rankedLists};
}

std::string joined(const std::vector<DownloadedMotif>& motifs, std::string (*textOf)(const DownloadedMotif&)) {
    return std::accumulate(
        motifs.begin(), motifs.end(), std::string(),
        [&](std::string text, const DownloadedMotif& motif) { return std::move(text) + textOf(motif); });
}

void writeCombined(const JobResults& results, const std::string& folder) {
    const MergedList lists[] = {
        {ListKind::topGlobal, topGlobalMatchingResults, mergedMotifGlobalMatching},
        {ListKind::significant, topGlobalAndLocalMatchingResults, mergedMotifGlobalAndLocalMatching},
        {ListKind::eachMotif, topBestMatchesResults, mergedMotifBestMatches},
    };
    const std::string stem = folder + "combined_motifs";
    writeText(stem + ".tsv", combinedTsv(results, lists));
    const std::vector<DownloadedMotif> motifs = combinedMotifs(results, lists);
    writeText(stem + ".meme", memeText(motifs));
    writeText(stem + ".jaspar", joined(motifs, [](const DownloadedMotif& motif) { return jasparText(motif); }));
    writeText(stem + ".transfac", joined(motifs, [](const DownloadedMotif& motif) { return transfacText(motif); }));
}

/// Writes the tree of one table, and notes if it cannot be written.
void writeTreeOf(const TreeFiles& tree, const char* stem, const TableSettings& settings,
                 std::vector<std::string>& notes) {
    TreePaths paths{outputPath + tree.table, settings.folder + stem + ".nwk", ""};
    if (lacksPicture(Datasets.size())) paths.picture = settings.folder + stem + ".png";
    const std::string missing = writeTree(settings.treeScript, paths);
    if (!missing.empty()) notes.push_back(missing);
}

}  // namespace

std::vector<std::string> writeTables(const JobSources& sources, const std::vector<SkippedMotif>& skipped,
                                     const TableSettings& settings) {
    const double begin = omp_get_wtime();
    const JobResults results = resultsOf(sources);
    std::vector<std::string> notes;
    {
        OutputFile tsv(settings.folder + "matches.tsv");
        OutputFile json(settings.folder + "matches.json");
        writeMatches(tsv.stream(), json.stream(), results);
    }
    writeText(settings.folder + "motifs.tsv", motifsTsv(results));
    writeText(settings.folder + "skipped.tsv", skippedTsv(skipped));
    if (combinedMotifFlag == "Y") writeCombined(results, settings.folder);
    if (isLocalTreeDrawn()) writeTreeOf(listTree, "tree", settings, notes);
    if (isGlobalTreeDrawn()) writeTreeOf(globalTree, "tree_global", settings, notes);
    stageTimes.push_back({"tables", omp_get_wtime() - begin});
    return notes;
}

void writeJobRecord(const JobSources& sources, const RecordedJob& job, const TableSettings& settings) {
    const JobRecord record{job.version,           getCurrDateTime(),           job.settings, job.inputs, stageTimes,
                           peakMemoryOfProcess(), filesBelow(settings.folder), job.notes};
    const std::string path = settings.folder + "job.json";
    const std::string unfinished = path + ".part";
    writeText(unfinished, jobRecordText(record, resultsOf(sources)));
    std::filesystem::rename(unfinished, path);
}

}  // namespace varnolix::job
