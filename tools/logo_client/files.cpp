#include "logo_client/files.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>

namespace varnolix::logos {

void Descriptor::close() {
    if (isOpen()) ::close(std::exchange(number_, -1));
}

std::optional<std::string> readAll(int descriptor) {
    std::string content;
    std::array<char, 16384> piece{};
    while (true) {
        const ssize_t count = read(descriptor, piece.data(), piece.size());
        if (count == 0) return content;
        if (count > 0) {
            content.append(piece.data(), static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return std::nullopt;
        }
    }
}

bool writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = write(descriptor, content.data(), content.size());
        if (count >= 0) {
            content.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool isPrivateFolder(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == getuid() &&
           (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

bool isSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

std::string setting(const char* name, const std::string& otherwise) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != 0 ? value : otherwise;
}

std::uint64_t numberSetting(const char* name, std::uint64_t otherwise) {
    const std::string text = setting(name);
    const char* end = text.data() + text.size();
    std::uint64_t value = 0;
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? value : otherwise;
}

std::uint64_t contentHash(std::string_view content) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char letter : content) {
        hash ^= static_cast<unsigned char>(letter);
        hash *= 0x100000001b3;
    }
    return hash;
}

std::string hexadecimal(std::uint64_t value) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text(16, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value /= 16) *digit = digits[value % 16];
    return text;
}

}  // namespace varnolix::logos
