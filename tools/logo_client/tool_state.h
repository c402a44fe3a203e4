#pragma once

#include <string>
#include <vector>

// Finds out which WebLogo and ghostscript are installed, from their files and without starting either.

namespace varnolix::logos {

/// Files and folders that show which tools are installed.
struct ToolFiles {
    std::vector<std::string> needed;  ///< drawing needs them; for a folder, the files in it count, too
    std::vector<std::string> others;  ///< may be missing, which is part of the state
};

/// The files and folders on this machine.
ToolFiles installedTools();

/// A short text that changes whenever one of these is replaced, changed, added or removed. Empty if a needed one is
/// missing. It is made from paths, sizes, inodes and times. One of these is the time when the inode last changed.
/// Neither packages nor users can set that back, so a past state never returns.
std::string toolState(const ToolFiles& files);

}  // namespace varnolix::logos
