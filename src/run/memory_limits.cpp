#include "run/memory_limits.h"

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

/// Where the groups of one version are seen.
struct GroupMount {
    std::string shownGroup;  ///< the group that the folder stands for: in a container often its own
    std::string folder;
};

/// A version of control groups: what it calls its type of file system, its controller, and its limit.
struct GroupVersion {
    std::string_view fileSystem;
    std::string_view controller;  ///< empty where all controllers share one tree
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

/// Where the version is mounted, or its usual place where the table of mounts does not tell.
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

/// The group of the process, as a path from the outermost one; nothing where the version is not in use.
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

/// The path below the group that the mount shows. A group beside it cannot be seen: only the shown one counts then.
std::string belowShown(const std::string& group, std::string shown) {
    if (shown.ends_with('/')) shown.pop_back();
    const bool isBelow = group.starts_with(shown) && (group.size() == shown.size() || group[shown.size()] == '/');
    if (!isBelow || group.find("/..") != std::string::npos) return "";
    std::string path = group.substr(shown.size());
    while (path.ends_with('/')) path.pop_back();
    return path;
}

/// A number of bytes. "max" and whatever else is no number mean no limit.
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

/// The limits on what lies in memory.
std::size_t residentLimit() {
    return std::min(pages(sysconf(_SC_PHYS_PAGES)), controlGroupLimit("").value_or(noLimit));
}

/// The limits on what is mapped.
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

}  // namespace varnolix
