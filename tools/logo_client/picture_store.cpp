#include "logo_client/picture_store.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "logo_client/files.h"

namespace varnolix::logos {

namespace {

constexpr unsigned subfolders = 64;
constexpr std::uint64_t megabyte = 1U << 20U;
constexpr std::uint64_t defaultMegabytes = 256;
constexpr std::uint64_t diskBlock = 512;  // the unit that stat uses on every file system
constexpr std::string_view jpegStart = "\xff\xd8\xff";
constexpr std::string_view jpegEnd = "\xff\xd9";

std::string subfolderOf(const PictureStore& store, const std::string& key) {
    return store.folder + "/" + hexadecimal(contentHash(key) % subfolders).substr(14);
}

std::string checksum(std::string_view content) {
    return hexadecimal(contentHash(content));
}

bool isOwn(const std::string& folder) {
    struct stat status {};
    return stat(folder.c_str(), &status) == 0 && status.st_uid == getuid();
}

/// A file in a sub-folder.
struct Entry {
    std::string path;
    std::uint64_t size;
    struct timespec used;
};

std::vector<Entry> entriesOf(const std::string& folder) {
    std::vector<Entry> entries;
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), closedir);
    if (!listing) return entries;
    while (const dirent* entry = readdir(listing.get())) {
        struct stat status {};
        if (fstatat(dirfd(listing.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode))
            entries.push_back({folder + "/" + static_cast<const char*>(entry->d_name),
                               static_cast<std::uint64_t>(status.st_blocks) * diskBlock, status.st_mtim});
    }
    return entries;
}

/// Removes the least recently used files until the rest is within the limit. This also clears away half-written files
/// that a killed caller has left.
void trim(const std::string& folder, std::uint64_t limit) {
    std::vector<Entry> entries = entriesOf(folder);
    std::uint64_t total = 0;
    for (const Entry& entry : entries) total += entry.size;
    if (total <= limit) return;
    std::sort(entries.begin(), entries.end(), [](const Entry& one, const Entry& other) {
        return std::pair(one.used.tv_sec, one.used.tv_nsec) < std::pair(other.used.tv_sec, other.used.tv_nsec);
    });
    for (const Entry& entry : entries) {
        if (total <= limit) return;
        unlink(entry.path.c_str());
        total -= entry.size;
    }
}

}  // namespace

std::optional<PictureStore> openStore() {
    if (setting("VARNOLIX_LOGO_STORE") == "no") return std::nullopt;
    std::string cache = setting("XDG_CACHE_HOME");
    if (cache.empty() || cache.front() != '/') {
        const std::string home = setting("HOME");
        // With somebody else's HOME, as under sudo, nothing must be put there.
        if (home.empty() || home.front() != '/' || !isOwn(home)) return std::nullopt;
        cache = home + "/.cache";
    }
    PictureStore store{cache + "/varnolix/logos", numberSetting("VARNOLIX_LOGO_STORE_MB", defaultMegabytes) * megabyte};
    if (isPrivateFolder(store.folder)) return store;
    mkdir(cache.c_str(), S_IRWXU);
    if (!isOwn(cache)) return std::nullopt;
    mkdir((cache + "/varnolix").c_str(), S_IRWXU);
    mkdir(store.folder.c_str(), S_IRWXU);
    if (!isPrivateFolder(store.folder)) return std::nullopt;
    return store;
}

std::string pictureKey(const std::string& tools, const std::vector<std::string>& environment,
                       const std::vector<std::string>& options, std::string_view matrix) {
    std::string key = "logo\ntools " + tools + "\n";
    for (const std::string& variable : environment) key += variable + "\n";
    for (const std::string& option : options) key += option + "\n";
    // The length makes sure that no key is the beginning of another one.
    return key + "matrix " + std::to_string(matrix.size()) + "\n" + std::string(matrix);
}

std::string entryPath(const PictureStore& store, const std::string& key) {
    return subfolderOf(store, key) + "/" + hexadecimal(contentHash(key));
}

std::optional<std::string> storedPicture(const PictureStore& store, const std::string& key) {
    const Descriptor file(open(entryPath(store, key).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file.isOpen()) return std::nullopt;
    const std::optional<std::string> entry = readAll(file.number());
    if (!entry || !entry->starts_with(key)) return std::nullopt;
    const std::size_t checksumLength = checksum("").size();
    if (entry->size() < key.size() + checksumLength) return std::nullopt;
    const std::string_view content = std::string_view(*entry).substr(0, entry->size() - checksumLength);
    const std::string_view picture = content.substr(key.size());
    if (!entry->ends_with(checksum(content)) || !picture.starts_with(jpegStart) || !picture.ends_with(jpegEnd))
        return std::nullopt;
    futimens(file.number(), nullptr);
    return std::string(picture);
}

void keepPicture(const PictureStore& store, const std::string& key, const std::string& picture) {
    const std::string subfolder = subfolderOf(store, key);
    mkdir(subfolder.c_str(), S_IRWXU);
    const std::string path = entryPath(store, key);
    const std::string unfinished = path + "." + std::to_string(getpid());
    Descriptor file(open(unfinished.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!file.isOpen()) return;
    const std::string content = key + picture;
    const bool isWritten = writeAll(file.number(), content + checksum(content));
    file.close();
    if (!isWritten || std::rename(unfinished.c_str(), path.c_str()) != 0) unlink(unfinished.c_str());
    trim(subfolder, store.limit / subfolders);
}

}  // namespace varnolix::logos
