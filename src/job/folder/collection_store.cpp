#include "job/folder/collection_store.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "job/downloads/motif_writers.h"
#include "job/folder/files.h"
#include "job/job_error.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

bool isTransfac(const Collection& collection) {
    return collection.name == "transfac";
}

/// Lines that begin with this text.
std::size_t countLines(const std::string& text, std::string_view start) {
    std::size_t count = text.starts_with(start) ? 1 : 0;
    const std::string wanted = "\n" + std::string(start);
    for (std::size_t at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + 1)) ++count;
    return count;
}

std::string countedMotifs(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " motif" : " motifs");
}

}  // namespace

fs::path collectionFile(const fs::path& base, const Collection& collection) {
    return base / collection.file.substr(1);
}

const Collection& collectionNamed(const std::string& name) {
    if (const Collection* found = findCollection(name)) return *found;
    std::string names;
    for (const Collection& collection : collections) names += " " + std::string(collection.name);
    throw JobError("no collection is named " + name + "; the names are:" + names);
}

std::size_t motifsInCollection(const fs::path& file) {
    return countLines(readFile(file), file.parent_path().filename() == "transfac" ? "AC" : ">");
}

std::string collectionTable(const fs::path& base) {
    std::ostringstream text;
    int number = 1;
    for (const Collection& collection : collections) {
        const fs::path file = collectionFile(base, collection);
        text << "  " << std::setw(4) << number++ << "  " << std::left << std::setw(20) << collection.name << std::right
             << " " << (fs::is_regular_file(file) ? countedMotifs(motifsInCollection(file)) : "not installed") << '\n';
    }
    text << "  " << std::setw(4) << number << "  " << std::left << std::setw(20) << "None"
         << " no collection\n";
    return text.str();
}

void installCollection(const fs::path& base, const Collection& collection, const std::vector<DownloadedMotif>& motifs) {
    const fs::path file = collectionFile(base, collection);
    std::error_code ignored;
    fs::create_directories(file.parent_path(), ignored);
    std::string text;
    for (DownloadedMotif motif : motifs) {
        // The stages take motifs of one name for one motif, so none may be without a name.
        if (motif.name.empty()) motif.name = motif.id;
        text += isTransfac(collection) ? transfacText(motif, Taxon::written) : jasparText(motif, Taxon::written);
    }
    writeFile(file, text);
}

}  // namespace varnolix::job
