#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "job/downloads/download.h"
#include "run/collections.h"

// The reference collections of an installation or of a job folder: files below `databases`.

namespace varnolix::job {

/// The file of the collection below this folder.
std::filesystem::path collectionFile(const std::filesystem::path& base, const Collection& collection);

/// The collection of this name. Throws JobError, with all names, if there is none.
const Collection& collectionNamed(const std::string& name);

/// The number of motifs in an installed collection.
std::size_t motifsInCollection(const std::filesystem::path& file);

/// A line for each collection: its answer in the dialogue, its name, and how many motifs are installed below the
/// folder.
std::string collectionTable(const std::filesystem::path& base);

/// Writes the motifs as the collection's file, in the layout that the stages read. The old file stays
/// until the new one is complete.
void installCollection(const std::filesystem::path& base, const Collection& collection,
                       const std::vector<DownloadedMotif>& motifs);

}  // namespace varnolix::job
