#include "job/collections_command.h"

#include <filesystem>
#include <iostream>
#include <optional>

#include "job/downloads/motif_files.h"
#include "job/folder/collection_store.h"
#include "job/folder/installation.h"
#include "job/job_error.h"
#include "job/run/job_sources.h"

namespace fs = std::filesystem;

namespace varnolix::job {

int listCollections() {
    const std::vector<CollectionPlace> places = collectionPlaces(findInstallation());
    std::cout << "Collections (answer in the dialogue, name, motifs, where from):\n"
              << collectionTable(places) << "Looked for in, the nearest first:\n";
    for (const CollectionPlace& place : places) {
        std::cout << "  " << place.owner << ": " << (place.base / "databases").string() << '\n';
    }
    return EXIT_SUCCESS;
}

int installCommand(const CollectionOptions& options) {
    const Collection& collection = collectionNamed(options.name);
    const bool isForAll = options.folder.empty();
    const fs::path base = isForAll ? commonCollections(findInstallation()) : fs::path(options.folder);
    if (!isForAll && !fs::is_directory(base)) throw JobError("there is no folder " + base.string());
    RunOptions reading;
    reading.layout = options.layout;
    reading.collection = options.file;
    const ReadSources read = readSources(reading, {});
    for (const SkippedMotif& skipped : read.skipped) std::cerr << refusalLine(skipped.file, skipped.motif);
    if (!read.skipped.empty()) throw JobError("the collection was not installed; what was there before stays");
    std::vector<DownloadedMotif> motifs;
    for (const JobMotif& job : read.sources.references) {
        if (!job.note.empty()) std::cerr << "note: motif " << job.motif.id << ": " << job.note << '\n';
        motifs.push_back(job.motif);
    }
    installCollection(base, collection, motifs);
    const fs::path file = collectionFile(base, collection);
    std::cout << collection.name << ": " << motifsInCollection(file) << " motifs in " << file.string() << '\n';
    return EXIT_SUCCESS;
}

}  // namespace varnolix::job
