#include "logo_client/tool_state.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <memory>

#include "logo_client/files.h"

namespace varnolix::logos {

namespace {

/// One line that describes the current state of a file or folder.
std::string stateLine(const std::string& path, const struct stat& status) {
    std::string line = path;
    for (const auto number :
         {static_cast<long long>(status.st_dev), static_cast<long long>(status.st_ino),
          static_cast<long long>(status.st_size), static_cast<long long>(status.st_mtim.tv_sec),
          static_cast<long long>(status.st_mtim.tv_nsec), static_cast<long long>(status.st_ctim.tv_sec),
          static_cast<long long>(status.st_ctim.tv_nsec)})
        line += " " + std::to_string(number);
    return line + "\n";
}

/// The paths of everything in a folder that is not hidden, sorted by name.
std::vector<std::string> filesIn(const std::string& folder) {
    std::vector<std::string> paths;
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), closedir);
    if (!listing) return paths;
    while (const dirent* entry = readdir(listing.get()))
        if (entry->d_name[0] != '.') paths.push_back(folder + "/" + static_cast<const char*>(entry->d_name));
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace

ToolFiles installedTools() {
    const std::string libraries = LOGO_LIBRARY_FOLDER;
    ToolFiles files{
        {"/usr/bin/gs", "/usr/bin/weblogo", "/usr/bin/python3", "/usr/lib/python3/dist-packages/weblogo"},
        {"/usr/lib/python3/dist-packages/numpy/version.py", "/usr/share/ghostscript", libraries + "/libgs.so.9",
         libraries + "/libgs.so.10", libraries + "/libjpeg.so.62", libraries + "/libfreetype.so.6",
         // Ghostscript uses the fonts it is asked for if they are installed, and its own otherwise.
         "/usr/share/fonts", "/usr/share/fonts/type1", "/usr/share/fonts/type1/urw-base35", "/usr/share/fonts/opentype",
         "/usr/share/fonts/truetype", "/usr/local/share/fonts", "/var/cache/fontconfig"}};
    // A WebLogo or NumPy that was installed by hand takes precedence over Debian's.
    std::array<char, PATH_MAX> name{};
    const ssize_t length = readlink("/usr/bin/python3", name.data(), name.size());
    if (length > 0) {
        const std::string python(name.data(), static_cast<std::size_t>(length));
        const std::string folder = "/usr/local/lib/" + python.substr(python.rfind('/') + 1) + "/dist-packages";
        files.others.push_back(folder);
        files.others.push_back(folder + "/weblogo");
    }
    return files;
}

std::string toolState(const ToolFiles& files) {
    std::string lines;
    struct stat status {};
    for (const std::string& path : files.needed) {
        if (stat(path.c_str(), &status) != 0) return "";
        lines += stateLine(path, status);
        if (!S_ISDIR(status.st_mode)) continue;
        for (const std::string& inside : filesIn(path))
            if (stat(inside.c_str(), &status) == 0 && S_ISREG(status.st_mode)) lines += stateLine(inside, status);
    }
    for (const std::string& path : files.others)
        lines += stat(path.c_str(), &status) == 0 ? stateLine(path, status) : path + " absent\n";
    return hexadecimal(contentHash(lines));
}

}  // namespace varnolix::logos
