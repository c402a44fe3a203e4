#pragma once

#include <string>

// What `varnolix-job --version` prints: what this program was made from, and which outside tools its jobs would use.

namespace varnolix::job {

/// The first twelve digits of the commit that the program was built from, with "-dirty" if files differed from it;
/// "unknown" if nobody knows. A unit of its own, which every build makes anew if the commit has changed.
const char* sourceCommit();

/// The lines about the program: its name and version first, for scripts, then commit, compiler and kernel.
std::string programLines();

/// All lines, with those about the outside tools. Asking these takes about a second, and never longer than their time
/// limit.
std::string versionText();

}  // namespace varnolix::job
