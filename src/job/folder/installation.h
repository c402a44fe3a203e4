#pragma once

#include <filesystem>

namespace varnolix::job {

/// Where the files are that a job needs beside the companion.
struct Installation {
    std::filesystem::path home;       ///< holds `tools` and `databases`
    std::filesystem::path program;    ///< the dialogue program
    std::filesystem::path logoTool;   ///< folder of the client that draws logos
    std::filesystem::path rPackages;  ///< R packages that the system does not have; need not exist
};

/// Finds these files: below the folder that VARNOLIX_HOME names, or around the companion itself. The program is the one
/// that VARNOLIX_PROGRAM names, or the one beside the companion. Throws JobError if the files are nowhere.
Installation findInstallation();

/// Lets the tools of a job find each other: PHP, the R packages and the fonts of this installation.
void prepareToolEnvironment(const Installation& installation);

}  // namespace varnolix::job
