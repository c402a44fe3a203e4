#include "job/tables/tables.h"

#include <omp.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <numeric>

#include "job/downloads/motif_writers.h"
#include "job/families/family_tables.h"
#include "job/tables/matches_table.h"
#include "job/tables/motifs_table.h"
#include "job/tables/tree_files.h"
#include "run/settings.h"
#include "run/system/output_file.h"
#include "tree/tree_plot.h"

namespace varnolix::job {

namespace {

/// The time as "2030-12-31T23:59:59Z".
std::string utcTime() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%FT%TZ", &parts)};
}

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

std::string joined(const std::vector<DownloadedMotif>& motifs, std::string (*textOf)(const DownloadedMotif&)) {
    return std::accumulate(
        motifs.begin(), motifs.end(), std::string(),
        [&](std::string text, const DownloadedMotif& motif) { return std::move(text) + textOf(motif); });
}

/// In each of the layouts.
void writeMotifs(const std::string& stem, const std::vector<DownloadedMotif>& motifs) {
    writeText(stem + ".meme", memeText(motifs));
    writeText(stem + ".jaspar", joined(motifs, [](const DownloadedMotif& motif) { return jasparText(motif); }));
    writeText(stem + ".transfac", joined(motifs, [](const DownloadedMotif& motif) { return transfacText(motif); }));
}

void writeCombined(const JobResults& results, const std::string& folder) {
    const std::vector<MergedList> lists = leftMerged();
    const std::string stem = folder + "combined_motifs";
    writeText(stem + ".tsv", combinedTsv(results, lists));
    writeMotifs(stem, combinedMotifs(results, lists));
}

void writeFamilies(const JobResults& results, const Families& families, const std::string& folder) {
    writeText(folder + "families.tsv", familiesTsv(families, results));
    writeText(folder + "family_members.tsv", familyMembersTsv(families, results));
    writeMotifs(folder + "family_motifs", familyMotifs(families, results));
    writeText(folder + "tree.nwk", familyTree(families, results));
}

/// The files of a tree, with a picture where the tree stage draws none.
TreePaths pathsOf(const TreeFiles& tree, const std::string& stem) {
    return {outputPath + tree.table, stem + ".nwk", lacksPicture(Datasets.size()) ? stem + ".png" : ""};
}

}  // namespace

JobResults leftResults(const JobSources& sources) {
    return {sources, Datasets, DatabaseDatasets, rankedLists};
}

std::vector<MergedList> leftMerged() {
    if (combinedMotifFlag != "Y") return {};
    return {{ListKind::topGlobal, topGlobalMatchingResults, mergedMotifGlobalMatching},
            {ListKind::significant, topGlobalAndLocalMatchingResults, mergedMotifGlobalAndLocalMatching},
            {ListKind::eachMotif, topBestMatchesResults, mergedMotifBestMatches}};
}

std::string listTreeStem(const TableSettings& settings) {
    return settings.folder + (settings.families == nullptr ? "tree" : "tree_matching");
}

JobSignificance leftSignificance(const JobSources& sources, const MatchVisitor& visit) {
    const double begin = omp_get_wtime();
    JobSignificance significance =
        significanceOf(leftResults(sources), static_cast<std::size_t>(numBestMatches), visit);
    stageTimes.push_back({"p-values", omp_get_wtime() - begin});
    return significance;
}

std::vector<std::string> writeTables(const JobSources& sources, const JobSignificance& significance,
                                     const std::vector<SkippedMotif>& skipped, const TableSettings& settings) {
    const double begin = omp_get_wtime();
    const JobResults results = leftResults(sources);
    {
        OutputFile tsv(settings.folder + "matches.tsv");
        OutputFile json(settings.folder + "matches.json");
        writeMatches(tsv.stream(), json.stream(), results, significance, settings.mostQ);
    }
    writeText(settings.folder + "motifs.tsv", motifsTsv(results));
    writeText(settings.folder + "skipped.tsv", skippedTsv(skipped));
    if (combinedMotifFlag == "Y") writeCombined(results, settings.folder);
    if (settings.families != nullptr) writeFamilies(results, *settings.families, settings.folder);
    std::vector<TreePaths> trees;
    if (isLocalTreeDrawn()) trees.push_back(pathsOf(listTree, listTreeStem(settings)));
    if (isGlobalTreeDrawn()) trees.push_back(pathsOf(globalTree, settings.folder + "tree_global"));
    std::vector<std::string> notes = writeTrees(settings.treeScript, trees);
    if (settings.families != nullptr) {
        notes.insert(notes.end(), settings.families->notes.begin(), settings.families->notes.end());
    }
    stageTimes.push_back({"tables", omp_get_wtime() - begin});
    return notes;
}

JobRecord recordOf(const RecordedJob& job, const TableSettings& settings) {
    return {job.version,
            utcTime(),
            job.settings,
            job.inputs,
            stageTimes,
            peakMemoryOfProcess(),
            filesBelow(settings.folder),
            job.notes,
            job.command,
            omp_get_wtime() - job.begin};
}

void writeJobRecord(const JobSources& sources, const RecordedJob& job, const TableSettings& settings) {
    const std::string path = settings.folder + "job.json";
    const std::string unfinished = path + ".part";
    writeText(unfinished, jobRecordText(recordOf(job, settings), leftResults(sources)));
    std::filesystem::rename(unfinished, path);
}

}  // namespace varnolix::job
