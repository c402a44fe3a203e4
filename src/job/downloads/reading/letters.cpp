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

bool isUpper(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

bool isLower(char letter) {
    return letter >= 'a' && letter <= 'z';
}

/// The only run of upper-case letters in a sequence whose other letters are in lower case; empty if there is none.
std::string_view siteWithin(std::string_view sequence) {
    const auto* const from = std::find_if(sequence.begin(), sequence.end(), isUpper);
    const auto* const to = std::find_if_not(from, sequence.end(), isUpper);
    const bool hasSurroundings = from != sequence.begin() || to != sequence.end();
    if (!hasSurroundings || !std::all_of(sequence.begin(), from, isLower) ||
        !std::all_of(to, sequence.end(), isLower)) {
        return {};
    }
    return {from, static_cast<std::size_t>(to - from)};
}

/// How many sequences have each length.
using Lengths = std::map<std::size_t, std::size_t>;

/// Whether more than half of the sequences, and at least two, have one of the lengths.
bool haveCommonLength(const Lengths& lengths, std::size_t sequences) {
    return std::any_of(lengths.begin(), lengths.end(), [sequences](const auto& length) {
        return length.first > 0 && length.second > 1 && 2 * length.second > sequences;
    });
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

Lines withoutSurroundings(const Lines& sequences) {
    Lines sites;
    for (const TextLine& sequence : sequences) {
        const std::string_view site = siteWithin(sequence.text);
        if (site.empty() || (!sites.empty() && site.size() != sites.front().text.size())) return sequences;
        sites.push_back({site, sequence.number});
    }
    return sites;
}

bool areSites(const std::vector<Record>& records) {
    Lengths whole;
    Lengths within;
    bool hasOtherLetters = false;
    for (const Record& record : records) {
        if (record.body.size() > 1) return true;
        for (const TextLine& line : record.body) {
            if (std::any_of(line.text.begin(), line.text.end(), isGap)) return true;
            if (!std::all_of(line.text.begin(), line.text.end(), isOfSite)) hasOtherLetters = true;
            ++whole[line.text.size()];
            ++within[siteWithin(line.text).size()];
        }
    }
    if (hasOtherLetters) return false;
    return haveCommonLength(whole, records.size()) || haveCommonLength(within, records.size());
}

}  // namespace varnolix::job
