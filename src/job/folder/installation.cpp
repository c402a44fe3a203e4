#include "job/folder/installation.h"

#include <cstdlib>
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

/// A build folder lies two levels below the project; an installed companion has its data beside its own folder.
fs::path findHome(const fs::path& companionFolder) {
    if (const std::string named = variable("VARNOLIX_HOME"); !named.empty()) {
        if (!isHome(named)) throw JobError("VARNOLIX_HOME names " + named + ", which has no tools/prince.php");
        return fs::absolute(named);
    }
    for (const fs::path& candidate : {companionFolder / ".." / "..", companionFolder / ".." / "share" / "varnolix"}) {
        if (isHome(candidate)) return fs::canonical(candidate);
    }
    throw JobError("the files of this installation were not found around " + companionFolder.string() +
                   "; set VARNOLIX_HOME to the folder that holds tools and databases");
}

}  // namespace

Installation findInstallation() {
    const fs::path companionFolder = fs::read_symlink("/proc/self/exe").parent_path();
    Installation found;
    found.home = findHome(companionFolder);
    const std::string named = variable("VARNOLIX_PROGRAM");
    found.program = named.empty() ? companionFolder / "varnolix" : fs::absolute(named);
    const fs::path builtTool = found.program.parent_path() / "weblogo-3.4";
    found.logoTool = fs::exists(builtTool / "weblogo") ? builtTool : found.home / "tools" / "weblogo-3.4";
    found.rPackages = found.home / "build" / "R-library";
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
