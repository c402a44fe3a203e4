#include "job/folder/collection_store.h"

#include <unistd.h>

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "job/counted.h"
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

std::vector<CollectionPlace> collectionPlaces(const Installation& installation) {
    std::vector<CollectionPlace> places;
    if (!installation.userData.empty()) places.push_back({"user", installation.userData});
    places.push_back({"system", installation.home});
    return places;
}

const CollectionPlace* nearestPlace(const std::vector<CollectionPlace>& places, const Collection& collection) {
    const auto found = std::find_if(places.begin(), places.end(), [&](const CollectionPlace& place) {
        std::error_code ignored;
        return fs::is_regular_file(collectionFile(place.base, collection), ignored);
    });
    return found == places.end() ? nullptr : &*found;
}

fs::path nearestFile(const std::vector<CollectionPlace>& places, const Collection& collection) {
    const CollectionPlace* place = nearestPlace(places, collection);
    return place == nullptr ? fs::path() : collectionFile(place->base, collection);
}

std::string collectionTable(const std::vector<CollectionPlace>& places) {
    std::ostringstream text;
    int number = 1;
    for (const Collection& collection : collections) {
        text << "  " << std::setw(4) << number++ << "  " << std::left << std::setw(20) << collection.name << std::right
             << " ";
        if (const CollectionPlace* place = nearestPlace(places, collection)) {
            const fs::path file = collectionFile(place->base, collection);
            text << counted(motifsInCollection(file), "motif");
            if (!place->owner.empty()) text << ", " << place->owner << ": " << file.string();
        } else {
            text << "not installed";
        }
        text << '\n';
    }
    text << "  " << std::setw(4) << number << "  " << std::left << std::setw(20) << "None"
         << " no collection\n";
    return text.str();
}

fs::path commonCollections(const Installation& installation) {
    if (installation.isBuildTree && access(installation.home.c_str(), W_OK) == 0) return installation.home;
    if (!installation.userData.empty()) return installation.userData;
    throw JobError("neither XDG_DATA_HOME nor HOME says where your collections are; --to names a folder");
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
