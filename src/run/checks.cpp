#include "run/checks.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>

namespace varnolix {

namespace {

/// The characters that a check allows.
class CharacterSet {
  public:
    constexpr explicit CharacterSet(std::string_view characters) {
        for (const char c : characters) isMember_[static_cast<unsigned char>(c)] = true;
    }

    bool holdsAllOf(std::string_view text) const {
        return std::all_of(text.begin(), text.end(), [&](char c) { return isMember_[static_cast<unsigned char>(c)]; });
    }

  private:
    std::array<bool, 256> isMember_{};
};

constexpr CharacterSet digitsAndPoint{"0123456789."};
constexpr CharacterSet digitsButZero{"123456789"};
constexpr CharacterSet iupacLetters{"-ABCDGHKMNRSTVWY"};
constexpr CharacterSet nucleotides{"-ACGT"};
constexpr mode_t directoryBit = 0x4000;

}  // namespace

bool checkNumeric(std::string_view text) {
    return digitsAndPoint.holdsAllOf(text);
}

bool checkDouble(std::string_view text) {
    return !text.empty() && digitsAndPoint.holdsAllOf(text) && std::count(text.begin(), text.end(), '.') == 1;
}

bool checkNumThreads(std::string_view text) {
    return digitsButZero.holdsAllOf(text);
}

bool checkSpace(std::string_view text) {
    return text.find(' ') == std::string_view::npos;
}

bool checkIUPAC(std::string_view text) {
    return iupacLetters.holdsAllOf(text);
}

bool checkNucleotide(std::string_view text) {
    return nucleotides.holdsAllOf(text);
}

bool isValidPath(const char* path) {
    struct stat status {};
    return stat(path, &status) == 0 && (status.st_mode & directoryBit) != 0;
}

}  // namespace varnolix
