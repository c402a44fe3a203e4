#include "run/system/memory_limits.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <limits>
#include <sstream>
#include <string_view>
#include <vector>

namespace varnolix {

namespace {

constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

/// Where the groups of one version are mounted.
struct GroupMount {
    std::string shownGroup;  ///< the group that the folder shows; in a container this is often its own group
    std::string folder;
};

/// A version of control groups, and what its file system, controller and limit file are called.
struct GroupVersion {
    std::string_view fileSystem;
    std::string_view controller;  ///< empty if all controllers share one tree
    const char* limitFile;
    const char* usualFolder;
};

constexpr GroupVersion groupVersions[] = {
    {"cgroup2", "", "/memory.max", "/sys/fs/cgroup"},
    {"cgroup", "memory", "/memory.limit_in_bytes", "/sys/fs/cgroup/memory"},
};

bool isInList(std::string_view list, std::string_view word) {
    return ("," + std::string(list) + ",").find("," + std::string(word) + ",") != std::string::npos;
}

/// Where the version is mounted; its usual folder if the table of mounts does not list it.
GroupMount mountOf(const GroupVersion& version, const std::string& root) {
    std::ifstream table(root + "/proc/self/mountinfo");
    std::string line;
    while (std::getline(table, line)) {
        // "31 23 0:28 SHOWN FOLDER OPTIONS ... - TYPE SOURCE OPTIONS"
        const std::size_t border = line.find(" - ");
        if (border == std::string::npos) continue;
        std::string skipped;
        GroupMount mount;
        std::istringstream(line.substr(0, border)) >> skipped >> skipped >> skipped >> mount.shownGroup >> mount.folder;
        std::string type;
        std::string options;
        std::istringstream(line.substr(border + 3)) >> type >> skipped >> options;
        if (type == version.fileSystem && (version.controller.empty() || isInList(options, version.controller))) {
            return mount;
        }
    }
    return {"/", version.usualFolder};
}

/// The group of the process, as a path from the outermost one. Nothing if this version is not in use.
std::optional<std::string> groupOf(const GroupVersion& version, const std::string& root) {
    std::ifstream table(root + "/proc/self/cgroup");
    std::string line;
    while (std::getline(table, line)) {
        // "0::PATH", or "4:memory:PATH" with one or more controllers
        const std::size_t first = line.find(':');
        const std::size_t second = first == std::string::npos ? first : line.find(':', first + 1);
        if (second == std::string::npos || line.find('/', second) != second + 1) continue;
        const std::string controllers = line.substr(first + 1, second - first - 1);
        if (version.controller.empty() ? controllers.empty() : isInList(controllers, version.controller)) {
            return line.substr(second + 1);
        }
    }
    return std::nullopt;
}

/// The path of `group` relative to the group that the mount shows. A group outside of that cannot be seen; the path is
/// then empty, so that only the shown group counts.
std::string belowShown(const std::string& group, std::string shown) {
    if (shown.ends_with('/')) shown.pop_back();
    const bool isBelow = group.starts_with(shown) && (group.size() == shown.size() || group[shown.size()] == '/');
    if (!isBelow || group.find("/..") != std::string::npos) return "";
    std::string path = group.substr(shown.size());
    while (path.ends_with('/')) path.pop_back();
    return path;
}

/// The number of bytes in a limit file. "max", or anything else that is not a number, means no limit.
std::size_t limitIn(const std::string& path) {
    std::ifstream file(path);
    std::string word;
    file >> word;
    std::size_t bytes = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), bytes);
    return error == std::errc{} && end == word.data() + word.size() ? bytes : noLimit;
}

std::size_t limitOf(int resource) {
    rlimit limit{};
    if (getrlimit(static_cast<__rlimit_resource_t>(resource), &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) {
        return noLimit;
    }
    return limit.rlim_cur;
}

std::size_t pages(long count) {
    return static_cast<std::size_t>(count) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// The limit on resident memory.
std::size_t residentLimit() {
    return std::min(pages(sysconf(_SC_PHYS_PAGES)), controlGroupLimit("").value_or(noLimit));
}

/// The limit on mapped memory.
std::size_t mappedLimit() {
    return std::min(limitOf(RLIMIT_AS), limitOf(RLIMIT_DATA));
}

}  // namespace

std::optional<std::size_t> controlGroupLimit(const std::string& root) {
    std::size_t least = noLimit;
    for (const GroupVersion& version : groupVersions) {
        const std::optional<std::string> group = groupOf(version, root);
        if (!group) continue;
        const GroupMount mount = mountOf(version, root);
        const std::string folder = root + mount.folder;
        for (std::string path = folder + belowShown(*group, mount.shownGroup); path.size() >= folder.size();
             path.erase(path.rfind('/'))) {
            least = std::min(least, limitIn(path + version.limitFile));
            if (path.empty()) break;
        }
    }
    if (least == noLimit) return std::nullopt;
    return least;
}

std::size_t memoryOfProcess() {
    return std::min(residentLimit(), mappedLimit());
}

std::size_t memoryLeft() {
    std::ifstream usage("/proc/self/statm");
    long mapped = 0;
    long resident = 0;
    usage >> mapped >> resident;
    const auto left = [](std::size_t limit, std::size_t used) { return limit > used ? limit - used : 0; };
    return std::min(left(residentLimit(), pages(resident)), left(mappedLimit(), pages(mapped)));
}

std::size_t memoryAvailable(const std::string& root) {
    constexpr std::size_t kilobyte = 1024;
    std::ifstream table(root + "/proc/meminfo");
    std::string name;
    std::size_t amount = 0;
    while (table >> name >> amount) {
        if (name == "MemAvailable:") return std::min(memoryLeft(), amount * kilobyte);
        table.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    return memoryLeft();
}

}  // namespace varnolix
