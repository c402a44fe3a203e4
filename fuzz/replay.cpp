#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/targets.h"

// Runs stored inputs through the fuzz targets, once each and with any compiler, so that fixed faults stay fixed.
//   fuzz_replay CORPUS        the folder CORPUS/<target> of every target
//   fuzz_replay TARGET FILE   one file
// A violated promise ends the process with abort(). The last line printed names the file.

namespace {

using namespace varnolix::fuzz;

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot open " + path.string());
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void replay(const Target& target, const std::filesystem::path& path) {
    std::printf("%s %s\n", target.name, path.c_str());
    std::fflush(stdout);
    target.run(readFile(path));
}

void replayFolder(const Target& target, const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) files.push_back(entry.path());
    if (files.empty()) throw std::runtime_error("no inputs in " + folder.string());
    std::sort(files.begin(), files.end());
    for (const std::filesystem::path& file : files) replay(target, file);
}

const Target& targetOf(const std::string& name) {
    for (const Target& target : targets) {
        if (name == target.name) return target;
    }
    throw std::runtime_error("no such target: " + name);
}

void run(const std::vector<std::string>& arguments) {
    if (arguments.size() == 2) {
        replay(targetOf(arguments[0]), arguments[1]);
        return;
    }
    if (arguments.size() != 1) throw std::runtime_error("usage: fuzz_replay CORPUS, or fuzz_replay TARGET FILE");
    for (const Target& target : targets) replayFolder(target, std::filesystem::path(arguments[0]) / target.name);
}

}  // namespace

int main(int count, char** arguments) {
    try {
        run({arguments + 1, arguments + count});
        return 0;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "fuzz_replay: %s\n", problem.what());
        return 2;
    }
}
