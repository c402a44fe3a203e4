#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "job/downloads/download.h"
#include "job/folder/installation.h"
#include "run/collections.h"

// The reference collections: files below `databases` of a job folder, of the user's own data, or of the installation.

namespace varnolix::job {

/// The file of the collection below this folder.
std::filesystem::path collectionFile(const std::filesystem::path& base, const Collection& collection);

/// The collection of this name. Throws JobError, with all names, if there is none.
const Collection& collectionNamed(const std::string& name);

/// The number of motifs in an installed collection.
std::size_t motifsInCollection(const std::filesystem::path& file);

/// A folder with collections below it.
struct CollectionPlace {
    std::string owner;  ///< "user" or "system"; empty for a job folder
    std::filesystem::path base;
};

/// Where the collections of all jobs are, the nearest first: of two files of one collection the nearest is used.
std::vector<CollectionPlace> collectionPlaces(const Installation& installation);

/// The place that the collection is taken from; nullptr if it is installed in none of them.
const CollectionPlace* nearestPlace(const std::vector<CollectionPlace>& places, const Collection& collection);

/// The file of the collection in the nearest place; empty if it is installed in none of them.
std::filesystem::path nearestFile(const std::vector<CollectionPlace>& places, const Collection& collection);

/// A line for each collection: its answer in the dialogue, its name, how many motifs are installed, and, where the
/// places have owners, whose it is and the file.
std::string collectionTable(const std::vector<CollectionPlace>& places);

/// Where a collection goes that is installed for all later jobs: into the project where that can be written, otherwise
/// to the user. Files of the installed system belong to its packages. Throws JobError if no home of the user is known.
std::filesystem::path commonCollections(const Installation& installation);

/// Writes the motifs as the collection's file, in the layout that the stages read. The old file stays
/// until the new one is complete.
void installCollection(const std::filesystem::path& base, const Collection& collection,
                       const std::vector<DownloadedMotif>& motifs);

}  // namespace varnolix::job
