#include "run/checks.h"

#include <sys/stat.h>

#include <algorithm>

namespace varnolix {

namespace {

bool onlyOf(std::string_view text, std::string_view allowed) {
    return text.find_first_not_of(allowed) == std::string_view::npos;
}

constexpr std::string_view digitsAndPoint = "0123456789.";
constexpr mode_t directoryBit = 0x4000;

}  // namespace

bool checkNumeric(std::string_view text) {
    return onlyOf(text, digitsAndPoint);
}

bool checkDouble(std::string_view text) {
    return !text.empty() && onlyOf(text, digitsAndPoint) && std::count(text.begin(), text.end(), '.') == 1;
}

bool checkNumThreads(std::string_view text) {
    return onlyOf(text, "123456789");
}

bool checkSpace(std::string_view text) {
    return text.find(' ') == std::string_view::npos;
}

bool checkIUPAC(std::string_view text) {
    return onlyOf(text, "-ABCDGHKMNRSTVWY");
}

bool checkNucleotide(std::string_view text) {
    return onlyOf(text, "-ACGT");
}

bool isValidPath(const char* path) {
    struct stat status {};
    return stat(path, &status) == 0 && (status.st_mode & directoryBit) != 0;
}

}  // namespace varnolix
