#pragma once

#include <filesystem>

namespace varnolix::job {

/// Where the files are that a job needs beside the companion.
struct Installation {
    std::filesystem::path home;       ///< holds `tools` and `databases`
    std::filesystem::path program;    ///< the dialogue program
    std::filesystem::path logoTool;   ///< folder of the client that draws logos
    std::filesystem::path rPackages;  ///< R packages that the system does not have; need not exist
    bool isBuildTree = false;         ///< `home` is the project itself, and not what was installed from it
    /// What the user has for all jobs: varnolix below XDG_DATA_HOME or ~/.local/share. Empty if no home is known.
    std::filesystem::path userData{};
};

/// Finds these files: below the folder that VARNOLIX_HOME names, or around the companion itself. The program is the one
/// that VARNOLIX_PROGRAM names, or the one beside the companion. Throws JobError if the files are nowhere.
Installation findInstallation();

/// Lets the tools of a job find each other: PHP, the R packages and the fonts of this installation.
void prepareToolEnvironment(const Installation& installation);

}  // namespace varnolix::job
