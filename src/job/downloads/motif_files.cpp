#include "job/downloads/motif_files.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <istream>
#include <string_view>

#include "run/system/memory_limits.h"

namespace varnolix::job {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t partSize = std::size_t{1} << 20U;

/// The text and what is made from it need several times its size.
std::uint64_t mostBytesNow() {
    constexpr std::uint64_t share = 4;
    return std::min<std::uint64_t>(mostUnpackedBytes, memoryLeft() / share);
}

std::string tooLong(std::uint64_t mostBytes) {
    constexpr std::uint64_t megabyte = 1U << 20U;
    return "more than " + std::to_string(mostBytes / megabyte) + " MB of text";
}

TextOrReason readStream(std::istream& stream, std::uint64_t mostBytes) {
    TextOrReason found;
    std::vector<char> part(partSize);
    while (stream.read(part.data(), static_cast<std::streamsize>(part.size())) || stream.gcount() > 0) {
        found.text.append(part.data(), static_cast<std::size_t>(stream.gcount()));
        if (found.text.size() > mostBytes) return {"", tooLong(mostBytes)};
    }
    if (stream.bad()) return {"", "it cannot be read to its end"};
    return found;
}

/// A stream of zlib that ends with its scope.
struct Inflation {
    z_stream stream{};
    bool isOpen = false;

    Inflation() {
        constexpr int gzipOnly = 16 + MAX_WBITS;
        isOpen = inflateInit2(&stream, gzipOnly) == Z_OK;
    }
    ~Inflation() {
        if (isOpen) inflateEnd(&stream);
    }
    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;
    Inflation(Inflation&&) = delete;
    Inflation& operator=(Inflation&&) = delete;
};

bool isGzip(std::string_view text) {
    return text.starts_with("\x1F\x8B");
}

/// What follows the members: nothing, zeros that fill a block, or another member.
bool isEnd(std::string_view rest) {
    return rest.find_first_not_of('\0') == std::string_view::npos;
}

/// Unpacks the first member and removes it from `packed`. Returns why it cannot be, or an empty text.
std::string unpackMember(std::string_view& packed, std::string& text, std::uint64_t mostBytes) {
    constexpr const char* broken = "broken gzip data";
    Inflation inflation;
    if (!inflation.isOpen) return "no memory to unpack it";
    std::vector<Bytef> part(partSize);
    int status = Z_OK;
    while (status != Z_STREAM_END) {
        if (inflation.stream.avail_in == 0) {
            const std::size_t size = std::min(packed.size(), partSize);
            if (size == 0) return "gzip data that ends too early";
            // zlib does not change its input, but older interfaces do not say so.
            inflation.stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
            inflation.stream.avail_in = static_cast<uInt>(size);
            packed.remove_prefix(size);
        }
        inflation.stream.next_out = part.data();
        inflation.stream.avail_out = static_cast<uInt>(part.size());
        status = inflate(&inflation.stream, Z_NO_FLUSH);
        if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR) return broken;
        text.append(reinterpret_cast<const char*>(part.data()), part.size() - inflation.stream.avail_out);
        if (text.size() > mostBytes) return tooLong(mostBytes) + " when it is unpacked";
    }
    const std::size_t unread = inflation.stream.avail_in;
    packed = {packed.data() - unread, packed.size() + unread};
    return "";
}

/// The extension of a name such as ".txt": a point and letters, at least two. Others belong to the name, as in
/// "MA0004.1".
std::size_t beginOfExtension(const std::string& name) {
    const std::size_t point = name.rfind('.');
    if (point == std::string::npos || point == 0 || name.size() - point < 3) return name.size();
    const bool areLetters = std::all_of(name.begin() + static_cast<std::ptrdiff_t>(point) + 1, name.end(),
                                        [](unsigned char letter) { return std::isalpha(letter) != 0; });
    return areLetters ? point : name.size();
}

TextOrReason readPath(const std::string& path) {
    if (path == "-") return readStream(std::cin, mostBytesNow());
    // Opening a device can have an effect, and it may never end. A pipe is what a shell gives for "<(command)".
    std::error_code problem;
    const fs::file_status status = fs::status(path, problem);
    if (!fs::exists(status)) return {"", "there is no such file"};
    if (!fs::is_regular_file(status) && !fs::is_fifo(status)) return {"", "it is neither a file nor a folder"};
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) return {"", std::string("it cannot be opened (") + std::strerror(errno) + ")"};
    return readStream(file, mostBytesNow());
}

/// The files in a folder, in the order of their names.
std::vector<std::string> filesIn(const std::string& folder, std::error_code& problem) {
    std::vector<std::string> paths;
    for (fs::directory_iterator entry(folder, problem), end; !problem && entry != end; entry.increment(problem)) {
        std::error_code unknown;
        const bool isHidden = entry->path().filename().native().starts_with('.');
        if (!isHidden && entry->is_regular_file(unknown)) paths.push_back(entry->path().native());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

void appendFile(const std::string& path, MotifFiles& found) {
    TextOrReason read = readPath(path);
    if (read.reason.empty()) read = unpacked(std::move(read.text), mostBytesNow());
    if (read.reason.empty()) {
        found.files.push_back({path, baseNameOf(path), std::move(read.text)});
        return;
    }
    found.path = path;
    found.reason = std::move(read.reason);
}

}  // namespace

TextOrReason unpacked(std::string text, std::uint64_t mostBytes) {
    if (!isGzip(text)) return {std::move(text), ""};
    TextOrReason found;
    std::string_view packed = text;
    do {
        found.reason = unpackMember(packed, found.text, mostBytes);
        if (found.reason.empty() && !isGzip(packed) && !isEnd(packed))
            found.reason = "gzip data with other data behind it";
    } while (found.reason.empty() && isGzip(packed));
    if (!found.reason.empty()) found.text.clear();
    return found;
}

std::string refusalLine(const std::string& path, const RefusedMotif& refused) {
    return "varnolix-job: " + path + ":" + std::to_string(refused.line) + ": " +
           (refused.id.empty() ? "" : "motif " + refused.id + ": ") + refused.reason + "\n";
}

MotifFiles readMotifFiles(const std::string& path) {
    MotifFiles found;
    std::error_code problem;
    if (path == "-" || !fs::is_directory(path, problem)) {
        appendFile(path, found);
        return found;
    }
    const std::vector<std::string> paths = filesIn(path, problem);
    if (problem || paths.empty()) {
        found.path = path;
        found.reason = problem ? "the folder cannot be read (" + problem.message() + ")" : "no file is in the folder";
        return found;
    }
    for (const std::string& file : paths) {
        appendFile(file, found);
        if (!found.reason.empty()) break;
    }
    return found;
}

std::string baseNameOf(const std::string& path) {
    if (path == "-") return "stdin";
    std::string name = fs::path(path).filename().native();
    if (name.ends_with(".gz")) name.erase(name.size() - 3);
    name.erase(beginOfExtension(name));
    return name;
}

}  // namespace varnolix::job
