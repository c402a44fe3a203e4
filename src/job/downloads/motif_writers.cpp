#include "job/downloads/motif_writers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <vector>

#include "input/input_block.h"
#include "job/downloads/reading/source_lines.h"

namespace varnolix::job {

namespace {

constexpr std::string_view bases = "ACGT";

/// The text as one word.
std::string joined(std::string_view text) {
    return joinedWords(splitTokens(text), 0, '_');
}

const std::string& nameOrId(const DownloadedMotif& motif) {
    return motif.name.empty() ? motif.id : motif.name;
}

/// The text in one field of a table.
std::string field(std::string text) {
    std::replace(text.begin(), text.end(), '\t', ' ');
    return text;
}

Column valuesOf(const NumberColumn& column) {
    return {parseNumber(column[0]), parseNumber(column[1]), parseNumber(column[2]), parseNumber(column[3])};
}

double sumOf(const Column& values) {
    return values[0] + values[1] + values[2] + values[3];
}

/// Whether the values are probabilities, perhaps rounded ones.
bool addUpToOne(double sum) {
    constexpr double rounding = 0.001;
    return std::abs(sum - 1) <= rounding;
}

/// The shortest plain text that reads back as the same number.
std::string plainText(double number) {
    std::array<char, 400> text;  // 5e-324 takes 326 characters
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
    return {text.data(), end};
}

NumberColumn probabilitiesOf(const NumberColumn& column) {
    const Column values = valuesOf(column);
    const double sum = sumOf(values);
    if (addUpToOne(sum)) return column;
    NumberColumn probabilities;
    for (std::size_t base = 0; base < bases.size(); ++base) {
        probabilities[base] = sum > 0 ? plainText(values[base] / sum) : "0";
    }
    return probabilities;
}

/// The number of sites: the one of the download if it is a whole number, or else for counts the greatest sum of a
/// column. Some readers do not go on without a number, so where it is not known it is the one that the programs of MEME
/// suppose.
std::string statedSites(const DownloadedMotif& motif) {
    constexpr const char* supposed = "20";
    constexpr std::size_t mostDigits = 9;
    constexpr double most = 1e9;
    const bool isWhole = motif.siteCount.find_first_not_of("0123456789") == std::string::npos;
    if (!motif.siteCount.empty() && motif.siteCount.size() <= mostDigits && isWhole) return motif.siteCount;
    double sites = 0;
    for (const NumberColumn& column : motif.columns) sites = std::max(sites, sumOf(valuesOf(column)));
    if (addUpToOne(sites) || sites < 1 || sites >= most) return supposed;
    return std::to_string(std::lround(sites));
}

void appendMemeMotif(const DownloadedMotif& motif, std::string& text) {
    text += "MOTIF " + joined(motif.id);
    if (!motif.name.empty()) text += " " + joined(motif.name);
    text += "\nletter-probability matrix: alength= 4 w= " + std::to_string(motif.columns.size()) +
            " nsites= " + statedSites(motif) + " E= 0\n";
    for (const NumberColumn& column : motif.columns) {
        for (const std::string& probability : probabilitiesOf(column)) text += " " + probability;
        text += '\n';
    }
    text += '\n';
}

void appendRightAligned(const std::string& value, std::size_t width, std::string& text) {
    text.append(width - value.size(), ' ');
    text += value;
}

}  // namespace

std::string jasparText(const DownloadedMotif& motif, Taxon taxon) {
    std::vector<std::size_t> widths;
    widths.reserve(motif.columns.size());
    for (const NumberColumn& column : motif.columns) {
        widths.push_back(std::max({column[0].size(), column[1].size(), column[2].size(), column[3].size()}));
    }
    std::string text = ">" + joined(motif.id) + " " + joined(nameOrId(motif));
    if (taxon == Taxon::written && !motif.taxon.empty()) text += " " + motif.taxon;
    text += '\n';
    for (std::size_t base = 0; base < bases.size(); ++base) {
        text += bases[base];
        text += " [";
        for (std::size_t position = 0; position < motif.columns.size(); ++position) {
            text += ' ';
            appendRightAligned(motif.columns[position][base], widths[position], text);
        }
        text += " ]\n";
    }
    return text + '\n';
}

std::string transfacText(const DownloadedMotif& motif, Taxon taxon) {
    std::string text;
    const auto appendLine = [&text](const char* tag, const std::string& content) {
        if (!content.empty()) text.append(tag).append("  ").append(content).append("\nXX\n");
    };
    appendLine("AC", joined(motif.id));
    appendLine("ID", joined(nameOrId(motif)));
    appendLine("NA", nameOrId(motif));
    if (taxon == Taxon::written) appendLine("OS", motif.taxon);
    text += "P0  A  C  G  T\n";
    for (std::size_t position = 0; position < motif.columns.size(); ++position) {
        const std::string number = std::to_string(position + 1);
        if (number.size() < 2) text += '0';
        text += number;
        for (const std::string& value : motif.columns[position]) text += "  " + value;
        text += '\n';
    }
    return text + "XX\n//\n";
}

std::string memeText(std::span<const DownloadedMotif> motifs) {
    std::string text =
        "MEME version 4\n\nALPHABET= ACGT\n\nstrands: + -\n\nBackground letter frequencies\n"
        "A 0.25 C 0.25 G 0.25 T 0.25\n\n";
    for (const DownloadedMotif& motif : motifs) appendMemeMotif(motif, text);
    return text;
}

std::string tsvText(std::span<const DownloadedMotif> motifs) {
    std::string text = "id\tname\tposition_1based\tA\tC\tG\tT\n";
    for (const DownloadedMotif& motif : motifs) {
        const std::string names = field(motif.id) + "\t" + field(motif.name) + "\t";
        for (std::size_t position = 0; position < motif.columns.size(); ++position) {
            text += names + std::to_string(position + 1);
            for (const std::string& value : motif.columns[position]) text += "\t" + value;
            text += '\n';
        }
    }
    return text;
}

}  // namespace varnolix::job
