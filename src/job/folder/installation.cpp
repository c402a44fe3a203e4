#include "job/folder/installation.h"

#include <cstdlib>
#include <initializer_list>
#include <string>

#include "job/job_error.h"

namespace fs = std::filesystem;

namespace varnolix::job {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// The value of a list of folders with another one in front.
std::string withFront(const fs::path& folder, const char* name) {
    const std::string rest = variable(name);
    return folder.string() + (rest.empty() ? "" : ":" + rest);
}

bool isHome(const fs::path& folder) {
    return fs::exists(folder / "tools" / "prince.php");
}

/// The first of the folders that fits, with no links and dots in its path; empty if none does.
template <typename Condition>
fs::path firstFolder(std::initializer_list<fs::path> folders, Condition fits) {
    for (const fs::path& folder : folders) {
        if (fits(folder)) return fs::weakly_canonical(folder);
    }
    return {};
}

/// An installed companion has its data in a fixed place seen from its own folder; a build folder lies two levels below
/// the project. The installed data come first, as a prefix may lie in the project.
fs::path findHome(const fs::path& companionFolder) {
    if (const std::string named = variable("VARNOLIX_HOME"); !named.empty()) {
        if (!isHome(named)) throw JobError("VARNOLIX_HOME names " + named + ", which has no tools/prince.php");
        return fs::absolute(named);
    }
    fs::path home = firstFolder({companionFolder / VARNOLIX_DATA_FOLDER, companionFolder / ".." / ".."}, isHome);
    if (!home.empty()) return home;
    throw JobError("the files of this installation were not found around " + companionFolder.string() +
                   "; set VARNOLIX_HOME to the folder that holds tools and databases");
}

/// By the rules of XDG, a relative path there does not count.
fs::path findUserData() {
    const fs::path named = variable("XDG_DATA_HOME");
    if (named.is_absolute()) return named / "varnolix";
    const fs::path home = variable("HOME");
    return home.is_absolute() ? home / ".local" / "share" / "varnolix" : fs::path();
}

}  // namespace

Installation findInstallation() {
    const fs::path companionFolder = fs::read_symlink("/proc/self/exe").parent_path();
    Installation found;
    found.home = findHome(companionFolder);
    // Only the sources have what builds them.
    found.isBuildTree = fs::exists(found.home / "scripts" / "setup.sh");
    found.userData = findUserData();
    const std::string named = variable("VARNOLIX_PROGRAM");
    found.program = named.empty() ? companionFolder / "varnolix" : fs::absolute(named);
    const fs::path tools = "weblogo-3.4";
    found.logoTool = firstFolder({found.program.parent_path() / tools, companionFolder / VARNOLIX_TOOL_FOLDER / tools,
                                  found.home / "tools" / tools},
                                 [](const fs::path& folder) { return fs::exists(folder / "weblogo"); });
    // In the project, setup.sh puts them into the build folder.
    const fs::path packages = found.home / "R-library";
    found.rPackages = fs::is_directory(packages) ? packages : found.home / "build" / "R-library";
    return found;
}

void prepareToolEnvironment(const Installation& installation) {
    const fs::path tools = installation.home / "tools";
    setenv("VARNOLIX_TOOLS", tools.c_str(), 1);
    setenv("PATH", withFront(tools / "bin", "PATH").c_str(), 1);
    if (fs::is_directory(installation.rPackages)) {
        setenv("R_LIBS", withFront(installation.rPackages, "R_LIBS").c_str(), 1);
    }
}

}  // namespace varnolix::job
