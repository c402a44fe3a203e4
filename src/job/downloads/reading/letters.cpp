#include "job/downloads/reading/letters.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace varnolix::job {

namespace {

bool isLetterOrGap(char character) {
    return std::isalpha(static_cast<unsigned char>(character)) != 0 || isGap(character);
}

/// A letter that a site may have: one base, or N for an unknown one.
bool isOfSite(char letter) {
    return std::string_view("ACGTUNacgtun").find(letter) != std::string_view::npos || isGap(letter);
}

}  // namespace

std::optional<NumberColumn> basesAllowedBy(char letter) {
    switch (std::toupper(static_cast<unsigned char>(letter))) {
        case 'A':
            return NumberColumn{"1", "0", "0", "0"};
        case 'C':
            return NumberColumn{"0", "1", "0", "0"};
        case 'G':
            return NumberColumn{"0", "0", "1", "0"};
        case 'T':
        case 'U':
            return NumberColumn{"0", "0", "0", "1"};
        case 'R':
            return NumberColumn{"1", "0", "1", "0"};
        case 'Y':
            return NumberColumn{"0", "1", "0", "1"};
        case 'S':
            return NumberColumn{"0", "1", "1", "0"};
        case 'W':
            return NumberColumn{"1", "0", "0", "1"};
        case 'K':
            return NumberColumn{"0", "0", "1", "1"};
        case 'M':
            return NumberColumn{"1", "1", "0", "0"};
        case 'B':
            return NumberColumn{"0", "1", "1", "1"};
        case 'D':
            return NumberColumn{"1", "0", "1", "1"};
        case 'H':
            return NumberColumn{"1", "1", "0", "1"};
        case 'V':
            return NumberColumn{"1", "1", "1", "0"};
        case 'N':
            return NumberColumn{"1", "1", "1", "1"};
        default:
            return std::nullopt;
    }
}

bool isGap(char character) {
    return character == '-' || character == '.';
}

bool isSequence(std::string_view line) {
    return line.size() > 1 && std::all_of(line.begin(), line.end(), isLetterOrGap);
}

bool areSites(const std::vector<Record>& records) {
    std::map<std::size_t, std::size_t> recordsOfLength;
    bool hasOtherLetters = false;
    for (const Record& record : records) {
        if (record.body.size() > 1) return true;
        for (const TextLine& line : record.body) {
            if (std::any_of(line.text.begin(), line.text.end(), isGap)) return true;
            if (!std::all_of(line.text.begin(), line.text.end(), isOfSite)) hasOtherLetters = true;
            ++recordsOfLength[line.text.size()];
        }
    }
    if (hasOtherLetters) return false;
    return std::any_of(recordsOfLength.begin(), recordsOfLength.end(), [&records](const auto& length) {
        return length.second > 1 && 2 * length.second > records.size();
    });
}

}  // namespace varnolix::job
