#pragma once

#include <string>
#include <vector>

// Which WebLogo and ghostscript are installed, told from their files without starting either.

namespace varnolix::logos {

/// Files and folders that tell which tools are installed.
struct ToolFiles {
    std::vector<std::string> needed;  ///< nothing is drawn without them; of folders the files in them count too
    std::vector<std::string> others;  ///< count as absent where they are absent
};

/// Those of this machine.
ToolFiles installedTools();

/// A short text that changes whenever one of them is replaced, changed, added or removed; empty where a needed one is
/// missing. Places, sizes, inodes and times are looked at. Among them is the time of the last change of the inode,
/// which no package and no user can set back, so a state that is over never returns.
std::string toolState(const ToolFiles& files);

}  // namespace varnolix::logos
