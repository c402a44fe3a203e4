#include "run/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "run/run_text.h"

// A stream cannot be told to leave links alone, so the file is opened before the stream, looked at, and the stream then
// opens the very same file by its descriptor's name below /proc. Without /proc the stream opens the path, and the run
// ends if that was changed for another file meanwhile. Tested by output_file_test.cpp.

namespace varnolix {

namespace {

[[noreturn]] void endForOutput(const std::string& path, const char* reason) {
    sayNotWritten(path, reason);
    endRun(invalidOutputPathMessage);
}

bool isSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Opens the stream on the file of the descriptor.
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
    // Without O_TRUNC: nothing may happen to a file before it is known to be ours.
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
    // What the system said was perhaps long ago, and other calls have followed.
    if (!stream) endForOutput(path, "the disk may be full");
}

void refuseLink(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode)) endForOutput(path, "it is a symbolic link");
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
