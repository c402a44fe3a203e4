#include "job/run/run_command.h"

#include <omp.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>

#include "job/counted.h"
#include "job/downloads/motif_files.h"
#include "job/downloads/motif_writers.h"
#include "job/folder/collection_store.h"
#include "job/folder/files.h"
#include "job/folder/folder_lock.h"
#include "job/folder/installation.h"
#include "job/folder/job_folder.h"
#include "job/job_error.h"
#include "job/page/page_data.h"
#include "job/page/write_page.h"
#include "job/run/answers.h"
#include "job/run/job_console.h"
#include "job/run/job_sources.h"
#include "job/tables/tables.h"
#include "run/runJob.h"
#include "run/shared_records.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

/// The dialogue's name of the collection that is made of a file: its motifs may each have a taxon of their own.
constexpr const char* collectionOfFile = "jasparAll";
constexpr const char* noCollection = "N";
constexpr std::size_t mostRefusalsPrinted = 20;

/// Prints what was refused. @return whether the job has to end for it
bool sayRefused(const ReadSources& read, bool goesOn) {
    std::size_t printed = 0;
    for (const SkippedMotif& skipped : read.skipped) {
        if (++printed > mostRefusalsPrinted) {
            std::cerr << "varnolix-job: and " << read.skipped.size() - mostRefusalsPrinted << " more\n";
            break;
        }
        std::cerr << refusalLine(skipped.file, skipped.motif);
    }
    return !read.skipped.empty() && !goesOn;
}

/// Writes the motifs of each data set in the layout that no reader of the stages can mistake.
void writeMotifFiles(const JobSources& sources, const fs::path& folder) {
    std::vector<std::string> texts(sources.datasets.size());
    for (const JobMotif& job : sources.motifs) {
        DownloadedMotif motif = job.motif;
        motif.id = job.reportName;
        texts[static_cast<std::size_t>(job.dataset - 1)] += jasparText(motif);
    }
    for (std::size_t place = 0; place < texts.size(); ++place) {
        writeFile(folder / "motifs" / sources.datasets[place].fileName, texts[place]);
    }
}

/// Puts the collection of the job into its folder, and returns its name in the dialogue.
std::string placeCollection(const RunOptions& options, const JobSources& sources, const fs::path& folder) {
    if (sources.collection.empty()) return noCollection;
    if (findCollection(options.collection) != nullptr) return options.collection;
    std::vector<DownloadedMotif> motifs;
    for (const JobMotif& job : sources.references) motifs.push_back(job.motif);
    installCollection(folder, collectionNamed(collectionOfFile), motifs);
    return collectionOfFile;
}

void sayCounts(const ReadSources& read) {
    for (const InputFile& file : read.files) {
        std::cout << file.file << ": " << counted(file.taken, "motif") << " read, " << file.refused << " refused\n";
    }
}

/// The stages must have read what the companion wrote for them, as the tables take names and places from both.
void requireSame(std::size_t read, std::size_t written, const char* what) {
    if (read == written) return;
    throw JobError("the stages read " + counted(read, "motif") + " of the " + what + ", but " +
                   std::to_string(written) + " were written for them");
}

/// The options, by their names.
nlohmann::ordered_json settingsOf(const RunOptions& options) {
    nlohmann::ordered_json settings = {
        {"top", options.topMotifs}, {"best", options.bestMatches},      {"cutoff", std::stod(options.cutoff)},
        {"threads", numThread},     {"collection", options.collection}, {"type", options.type},
        {"format", options.format}, {"tree", options.drawsTree},        {"merge", options.merges},
        {"trim", options.trimBits}, {"skip_bad", options.skipsBad},     {"max_q", options.mostQ}};
    if (options.findsFamilies) {
        settings["families"] = {{"linkage", linkageName(options.families.linkage)},
                                {"cut", options.families.cut},
                                {"flanks", options.families.flanks}};
    }
    return settings;
}

}  // namespace

int runCommand(const RunOptions& options) {
    const double begin = omp_get_wtime();
    const Installation installation = findInstallation();
    const ReadSources read = readSources(options, collectionPlaces(installation));
    const JobSources& sources = read.sources;
    if (!options.isQuiet) sayCounts(read);
    if (sayRefused(read, options.skipsBad)) {
        throw JobError("nothing was compared, as " + counted(read.skipped.size(), "motif") +
                       " cannot be read; --skip-bad leaves such motifs out");
    }
    if (sources.motifs.size() < 2) throw JobError("a job needs at least two motifs");

    if (options.findsFamilies) requireMemoryForFamilies(differentMotifs(sources));

    const fs::path wanted = options.folder.empty() ? freeFolderName() : options.folder;
    const FolderLock lock(wanted);
    claimFolder(wanted, options.replaces);
    const fs::path folder = makeJobFolder(wanted, installation);
    writeMotifFiles(sources, folder);
    fillAnswers(options, folder, sources, placeCollection(options, sources, folder));
    writeFile(folder / "answers.txt", answersText());

    fs::current_path(folder);
    prepareToolEnvironment(installation);
    keepsRankedLists = true;
    JobSignificance significance;
    Families families;
    std::vector<std::string> notes;
    TableSettings tables{folder.string() + "/", (installation.home / "tools" / "tree_newick.R").string(),
                         options.mostQ};
    {
        const JobConsole console("console.txt");
        runJob();
        requireSame(Datasets.size(), sources.motifs.size(), "motif files");
        if (!sources.collection.empty()) requireSame(DatabaseDatasets.size(), sources.references.size(), "collection");
        if (options.findsFamilies) {
            FamilyDistances distances(Datasets);
            significance = leftSignificance(
                sources, [&](std::size_t query, const QueryMatches& found) { distances.take(query, found); });
            FamilySettings withDistances = options.families;
            withDistances.keptDistances = mostMotifsOfFamilyMap;
            families = leftFamilies(distances, withDistances);
            tables.families = &families;
        } else {
            significance = leftSignificance(sources);
        }
        notes = writeTables(sources, significance, read.skipped, tables);
    }
    const nlohmann::ordered_json settings = settingsOf(options);
    const RecordedJob job{VARNOLIX_FULL_VERSION, settings, read.files, notes, options.arguments, begin};
    writePage(sources, significance, read.skipped, job, tables, pageFilesOf(installation.home),
              fs::canonical(folder).filename().string());
    writeJobRecord(sources, job, tables);
    for (const std::string& note : notes) std::cerr << "varnolix-job: note: " << note << '\n';
    if (!options.isQuiet) {
        std::cout << "Results in " << wanted.string() << "/; open " << (wanted / pageName).string()
                  << " in a browser\n";
    }
    return EXIT_SUCCESS;
}

}  // namespace varnolix::job
