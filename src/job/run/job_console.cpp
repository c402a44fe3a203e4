#include "job/run/job_console.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

#include "job/job_error.h"

namespace varnolix::job {

namespace {

/// The file that standard output goes to, for the function that is called at the end of the process.
std::string& consolePath() {
    static std::string path;
    return path;
}

void sayLastLine() {
    if (consolePath().empty()) return;
    std::cout.flush();
    std::ifstream file(consolePath());
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    std::cerr << "varnolix-job: " << lastLineOf(text) << '\n';
}

}  // namespace

JobConsole::JobConsole(const std::string& path) : standardOutput_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)) {
    std::cout.flush();
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file < 0 || dup2(file, STDOUT_FILENO) < 0) throw JobError("cannot write " + path);
    close(file);
    static const bool isRegistered = std::atexit(sayLastLine) == 0;
    (void)isRegistered;
    consolePath() = path;
}

JobConsole::~JobConsole() {
    std::cout.flush();
    consolePath().clear();
    if (standardOutput_ < 0) {
        close(STDOUT_FILENO);
        return;
    }
    dup2(standardOutput_, STDOUT_FILENO);
    close(standardOutput_);
}

std::string lastLineOf(const std::string& text) {
    const std::size_t end = text.find_last_not_of(" \n");
    if (end == std::string::npos) return "";
    const std::size_t lineEnd = text.rfind('\n', end);
    return text.substr(lineEnd + 1, end - lineEnd);
}

}  // namespace varnolix::job
