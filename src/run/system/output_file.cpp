#include "run/system/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "run/run_text.h"

// A stream cannot be told not to follow links. So the file is first opened and checked by its descriptor, and the
// stream then opens that same file under the descriptor's name in /proc. Without /proc the stream opens the path
// itself, provided that it still names the same file. Tested by output_file_test.cpp.

namespace varnolix {

namespace {

// errno is of no use here: the write may have failed long ago, with other calls in between.
constexpr const char* incompleteReason = "the disk may be full";

[[noreturn]] void endForOutput(const std::string& path, const char* reason) {
    sayNotWritten(path, reason);
    endRun(invalidOutputPathMessage);
}

bool isSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Opens the stream on the file that the descriptor refers to.
bool openOnDescriptor(std::ofstream& stream, int descriptor, const std::string& path, std::ios_base::openmode mode) {
    struct stat held {};
    if (fstat(descriptor, &held) != 0) return false;
    if (!S_ISREG(held.st_mode)) {
        errno = EINVAL;
        return false;
    }
    stream.open("/proc/self/fd/" + std::to_string(descriptor), mode);
    if (stream.is_open()) return true;
    struct stat named {};
    if (lstat(path.c_str(), &named) != 0 || !isSameFile(held, named)) return false;
    stream.open(path, mode);
    return stream.is_open();
}

}  // namespace

void sayNotWritten(const std::string& path, const char* reason) {
    std::cerr << path << " could not be written: " << reason << ".\n";
}

bool tryOpenOutput(std::ofstream& stream, const std::string& path, std::ios_base::openmode mode) {
    // No O_TRUNC: the file must not be changed before it has been checked.
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                                  S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH);
    if (descriptor < 0) {
        stream.setstate(std::ios_base::failbit);
        return false;
    }
    const bool isOpen = openOnDescriptor(stream, descriptor, path, mode);
    const int reason = errno;
    ::close(descriptor);
    errno = reason;
    return isOpen;
}

void openOutput(std::ofstream& stream, const std::string& path, std::ios_base::openmode mode) {
    if (!tryOpenOutput(stream, path, mode)) endForOutput(path, std::strerror(errno));
}

void closeOutput(std::ofstream& stream, const std::string& path) {
    stream.close();
    if (!stream) endForOutput(path, incompleteReason);
}

std::optional<OutputTrouble> writeOutput(const std::string& path, std::string_view text) {
    std::ofstream stream;
    if (!tryOpenOutput(stream, path)) return OutputTrouble{path, std::strerror(errno)};
    stream << text;
    stream.close();
    if (!stream) return OutputTrouble{path, incompleteReason};
    return std::nullopt;
}

std::optional<OutputTrouble> linkTrouble(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return std::nullopt;
    return OutputTrouble{path, "it is a symbolic link"};
}

void endOnTrouble(const std::optional<OutputTrouble>& trouble) {
    if (trouble) endForOutput(trouble->path, trouble->reason.c_str());
}

void refuseLink(const std::string& path) {
    endOnTrouble(linkTrouble(path));
}

void checkConsole() {
    if (std::cout.flush()) return;
    std::cerr << "Standard output could not be written: the disk may be full.\n";
    std::exit(EXIT_FAILURE);
}

void letFileSizeLimitFailWrites() {
    std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace varnolix
