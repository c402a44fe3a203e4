#include "job/run/job_sources.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "job/downloads/information.h"
#include "job/downloads/motif_files.h"
#include "job/job_error.h"
#include "job/tables/checksum.h"
#include "run/collections.h"
#include "run/shared_records.h"

namespace varnolix::job {

namespace {

constexpr const char* noCollection = "none";

/// What stands before and behind the "=" of NAME=FILE; the name is empty if only a file is given.
struct NamedFile {
    std::string name;
    std::string path;
};

NamedFile namedFileOf(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    // A path may hold "=", too; a name of a data set holds no slash.
    if (equals == std::string::npos || equals == 0 || argument.substr(0, equals).find('/') != std::string::npos ||
        std::filesystem::exists(argument)) {
        return {"", argument};
    }
    return {argument.substr(0, equals), argument.substr(equals + 1)};
}

void addNote(std::string& note, const std::string& text) {
    note += (note.empty() ? "" : "; ") + text;
}

/// Reads files into a list of motifs and keeps the counts.
class SourceReader {
  public:
    SourceReader(const RunOptions& options, ReadSources& read) : options_(options), read_(read) {}

    /// Appends the motifs of a file, or of all files of a folder.
    /// @param dataset 0 for the collection, which is not trimmed
    void readInto(std::vector<JobMotif>& motifs, const std::string& path, int dataset) {
        int number = 1;
        const MotifFiles found = readMotifFiles(path);
        if (!found.reason.empty()) throw JobError(found.path + ": " + found.reason);
        for (const MotifFile& file : found.files) {
            Download download = readDownload(file.text, file.baseName, options_.layout ? &*options_.layout : nullptr);
            InputFile count{file.path, 0, download.refused.size(), sha256OfFile(file.path)};
            for (RefusedMotif& refused : download.refused) read_.skipped.push_back({file.path, std::move(refused)});
            for (DownloadedMotif& motif : download.motifs) {
                JobMotif job = jobMotif(std::move(motif), file.path, dataset);
                if (job.motif.columns.empty()) {
                    read_.skipped.push_back(
                        {file.path, {job.motif.id, job.motif.line, "nothing is left of it by trimming"}});
                    ++count.refused;
                    continue;
                }
                job.dataset = std::max(dataset, 1);
                job.number = number++;
                motifs.push_back(std::move(job));
                ++count.taken;
            }
            read_.files.push_back(std::move(count));
        }
    }

  private:
    JobMotif jobMotif(DownloadedMotif motif, const std::string& file, int dataset) const {
        JobMotif job;
        job.motif = std::move(motif);
        job.reportName = reportNameOf(job.motif.id);
        job.file = file;
        if (dataset > 0 && options_.trimBits > 0) {
            const TrimmedFlanks cut = trimFlanks(job.motif, options_.trimBits);
            job.trimmedLeft = cut.left;
            job.trimmedRight = cut.right;
            if (cut.isEmpty) job.motif.columns.clear();
        }
        job.note = oddities(job.motif);
        if (job.reportName != job.motif.id) addNote(job.note, "the reports call it " + job.reportName);
        return job;
    }

    const RunOptions& options_;
    ReadSources& read_;
};

std::string datasetNameOf(const NamedFile& file) {
    if (!file.name.empty()) return file.name;
    return file.path == "-" ? "stdin" : baseNameOf(file.path);
}

/// Says that the collection is not installed; empty if it is.
std::string missingCollection(const Collection& collection, const std::vector<CollectionPlace>& places) {
    if (!nearestFile(places, collection).empty()) return "";
    const std::string name(collection.name);
    return "the collection " + name + " is not installed; varnolix-job collections install " + name +
           " FILE installs it";
}

}  // namespace

std::string reportNameOf(const std::string& id) {
    std::string name = id;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return c <= ' ' || c == 0x7f; }, '_');
    return name;
}

std::string motifFileName(const std::string& datasetName, const std::vector<JobDataset>& earlier) {
    std::string stem = datasetName;
    std::replace_if(
        stem.begin(), stem.end(),
        [](unsigned char c) { return std::isalnum(c) == 0 && c != '.' && c != '-' && c != '_'; }, '_');
    if (stem.empty() || stem[0] == '.' || stem[0] == '-') stem.insert(0, "motifs_");
    const auto isTaken = [&](const std::string& name) {
        return std::any_of(earlier.begin(), earlier.end(),
                           [&](const JobDataset& dataset) { return dataset.fileName == name; });
    };
    std::string name = stem + ".txt";
    for (int number = 2; isTaken(name); ++number) name = stem + "_" + std::to_string(number) + ".txt";
    return name;
}

std::string oddities(const DownloadedMotif& motif) {
    std::string note;
    if (motif.columns.size() < static_cast<std::size_t>(overlap)) {
        addNote(note, "fewer than " + std::to_string(overlap) + " columns, so it matches nothing");
    }
    const std::string empty = columnsWithoutCounts(motif);
    if (!empty.empty()) addNote(note, "no counts at position " + empty);
    if (informationOf(motif) < flatBits) addNote(note, "less than 0.25 bits of information in all");
    return note;
}

std::string missingSource(const RunOptions& options, const std::vector<CollectionPlace>& places) {
    std::vector<std::string> paths;
    for (const std::string& argument : options.files) paths.push_back(namedFileOf(argument).path);
    if (const Collection* installed = findCollection(options.collection)) {
        if (std::string reason = missingCollection(*installed, places); !reason.empty()) return reason;
    } else if (options.collection != noCollection) {
        paths.push_back(namedFileOf(options.collection).path);
    }
    for (const std::string& path : paths) {
        if (path != "-" && !std::filesystem::exists(path)) return "there is no file or folder " + path;
    }
    return "";
}

ReadSources readSources(const RunOptions& options, const std::vector<CollectionPlace>& places) {
    ReadSources read;
    JobSources& sources = read.sources;
    SourceReader reader(options, read);
    for (const std::string& argument : options.files) {
        const NamedFile file = namedFileOf(argument);
        const std::string name = datasetNameOf(file);
        sources.datasets.push_back({name, motifFileName(name, sources.datasets)});
        reader.readInto(sources.motifs, file.path, static_cast<int>(sources.datasets.size()));
    }
    if (options.collection == noCollection) return read;
    NamedFile file = namedFileOf(options.collection);
    sources.collection = datasetNameOf(file);
    if (const Collection* installed = findCollection(options.collection)) {
        file.path = nearestFile(places, *installed).string();
        if (const std::string reason = missingCollection(*installed, places); !reason.empty()) throw JobError(reason);
    }
    reader.readInto(sources.references, file.path, 0);
    return read;
}

}  // namespace varnolix::job
