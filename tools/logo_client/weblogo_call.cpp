#include "logo_client/weblogo_call.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "logo_client/files.h"

namespace varnolix::logos {

namespace {

constexpr unsigned plainSeconds = 600;

/// The words of a line, which are separated by blanks.
std::vector<std::string> wordsOf(std::string_view line) {
    constexpr std::string_view blanks = " \t\v\f";
    std::vector<std::string> words;
    while (true) {
        line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
        if (line.empty()) return words;
        const std::size_t length = std::min(line.find_first_of(blanks), line.size());
        words.emplace_back(line.substr(0, length));
        line.remove_prefix(length);
    }
}

}  // namespace

const std::vector<std::string>& drawingEnvironment() {
    // Without these two options, version 10 of ghostscript draws stray thin lines across logos with weak columns. The
    // launcher in tools/weblogo-3.4, used where this client is not built, sets the same ones.
    static const std::vector<std::string> environment = {
        "PATH=/usr/bin:/bin",
        "LC_ALL=C.UTF-8",
        "PYTHONNOUSERSITE=1",
        "GS_OPTIONS=-dDisableFAPI=true -dNOCACHE",
    };
    return environment;
}

bool isProgramCall(const std::vector<std::string>& options) {
    static const std::vector<std::string> head =
        wordsOf("--format jpeg --sequence-type dna --units bits --composition none --first-index 1");
    static const std::vector<std::string> tail = wordsOf(
        "--size medium --stacks-per-line 80 --show-xaxis YES --show-yaxis YES --ticmarks 1.0 --errorbars NO"
        " --stack-width 20 --resolution 96 --scale-width yes --color-scheme classic --color green A Adenine"
        " --color blue C Cytosine --color orange G Guanine --color red T Thymine");
    for (const bool isReverse : {false, true}) {
        std::vector<std::string> call = head;
        if (isReverse) call.emplace_back("--revcomp");
        call.insert(call.end(), tail.begin(), tail.end());
        if (options == call) return true;
    }
    return false;
}

bool isHeaderAlone(std::string_view matrix) {
    int lines = 0;
    bool isHeader = false;
    while (!matrix.empty()) {
        const std::size_t length = std::min(matrix.find_first_of("\r\n"), matrix.size());
        const std::vector<std::string> words = wordsOf(matrix.substr(0, length));
        if (!words.empty()) {
            ++lines;
            isHeader = words.front() == "PO" || words.front() == "P0";
        }
        matrix.remove_prefix(std::min(length + 1, matrix.size()));
    }
    return lines == 1 && isHeader;
}

std::vector<char*> pointersTo(const std::vector<std::string>& words) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (const std::string& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

int runWeblogo(const std::vector<std::string>& options) {
    const std::string command = setting("VARNOLIX_LOGO_WEBLOGO", "/usr/bin/weblogo");
    std::vector<std::string> words = {command};
    words.insert(words.end(), options.begin(), options.end());
    execve(command.c_str(), pointersTo(words).data(), pointersTo(drawingEnvironment()).data());
    std::fprintf(stderr, "%s: %s (package python3-weblogo)\n", command.c_str(), std::strerror(errno));
    return 1;
}

int runWeblogo(const std::vector<std::string>& options, std::string_view matrix) {
    alarm(plainSeconds);
    const Descriptor content(memfd_create("matrix", MFD_CLOEXEC));
    if (!writeAll(content.number(), matrix) || lseek(content.number(), 0, SEEK_SET) != 0 ||
        dup2(content.number(), STDIN_FILENO) < 0) {
        std::perror("weblogo: cannot hand on the matrix");
        return 1;
    }
    return runWeblogo(options);
}

}  // namespace varnolix::logos
