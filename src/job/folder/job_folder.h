#pragma once

#include <filesystem>
#include <string>

#include "job/folder/installation.h"

// The folder of a job. The stages need it in this shape: they read the motif files in `motifs`, write the reports to
// `result` beside it, and look below the folder itself, which is their working directory, for reference collections and
// for the script that converts pages.

namespace varnolix::job {

/// Makes the folder, or completes one that exists: its sub-folders, the links to the tools and to the installed
/// collections, and the script `run`, which starts the dialogue in it. What the user put there stays. Returns its full
/// path. Throws JobError.
std::filesystem::path makeJobFolder(const std::filesystem::path& folder, const Installation& installation);

/// What the command `folder` prints: where everything goes, and the collections with their numbers of motifs.
std::string describeJobFolder(const std::filesystem::path& folder);

/// The text of the file `run`, which starts the dialogue program in the job folder that it stands in.
std::string runScript(const Installation& installation);

/// The first of "varnolix-DATE-1", "varnolix-DATE-2", ... that does not exist in the working directory.
std::string freeFolderName();

/// Makes sure that a new job may use the folder: it does not exist, is empty, or is a job folder that may be emptied.
/// Empties it in the last case. Throws JobError otherwise.
void claimFolder(const std::filesystem::path& folder, bool mayEmpty);

}  // namespace varnolix::job
