#include "job/downloads/generated_downloads.h"

#include <random>

namespace varnolix::job::test {

namespace {

std::string baseRows(const GeneratedMotif& motif, const std::string& behindLetter, const std::string& between,
                     const std::string& end, bool withLetters) {
    std::string text;
    for (std::size_t base = 0; base < 4; ++base) {
        if (withLetters) text += "ACGT"[base] + behindLetter;
        for (std::size_t position = 0; position < motif.columns.size(); ++position) {
            text += (position > 0 ? between : "") + motif.columns[position][base];
        }
        text += end + "\n";
    }
    return text;
}

std::string positionRows(const GeneratedMotif& motif, const std::string& between, bool isNumbered) {
    std::string text;
    std::size_t number = 0;
    for (const NumberColumn& column : motif.columns) {
        if (isNumbered) text += std::to_string(++number) + between;
        text += column[0] + between + column[1] + between + column[2] + between + column[3] + "\n";
    }
    return text;
}

std::string headOf(Layout layout) {
    return layout == Layout::meme ? "MEME version 5.0.5\n\nALPHABET= ACGT\n\nstrands: + -\n\n" : "";
}

std::string entryOf(Layout layout, const GeneratedMotif& motif) {
    switch (layout) {
        case Layout::jaspar:
            return ">" + motif.id + "\tname\n" + baseRows(motif, "  [ ", "  ", " ]", true);
        case Layout::meme:
            return "MOTIF " + motif.id +
                   " name\nletter-probability matrix: alength= 4 w= " + std::to_string(motif.columns.size()) +
                   " nsites= 20 E= 1e-3\n" + positionRows(motif, "  ", false) + "URL http://example.org/\n\n";
        case Layout::transfac:
            return "AC  " + motif.id + "\nXX\nNA  name\nXX\nP0\tA\tC\tG\tT\n" + positionRows(motif, "\t", true) +
                   "XX\n//\n";
        case Layout::homer:
            return ">ACGT\t" + motif.id + "\t6.5\t-100.5\t0\n" + positionRows(motif, "\t", false);
        case Layout::hocomoco:
            return ">" + motif.id + "_HUMAN.H11MO.0.A\n" + positionRows(motif, "\t", false);
        case Layout::cisbp:
            return "TF\tT" + motif.id + "\nTF Name\tname\nMotif\t" + motif.id + "\nPos\tA\tC\tG\tT\n" +
                   positionRows(motif, "\t", true) + "\n";
        case Layout::uniprobe:
            return "Protein: " + motif.id + "\tEnrichment Score: 0.4\n\n" + baseRows(motif, ":\t", "\t", "", true) +
                   "\n";
        case Layout::clusterBuster:
            return ">" + motif.id + "\n# GC 0.5\n" + positionRows(motif, " ", false);
        case Layout::rows:
            return baseRows(motif, "", " ", "", false) + "\n";
        default:
            return positionRows(motif, "\t", false) + "\n";
    }
}

std::string drawn(const std::string& letters, std::size_t length, std::mt19937& random) {
    std::string text;
    for (std::size_t place = 0; place < length; ++place) text += letters[random() % letters.size()];
    return text;
}

}  // namespace

std::vector<GeneratedMotif> generatedMotifs(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    constexpr std::size_t sites = 20;
    std::vector<GeneratedMotif> motifs;
    for (std::size_t number = 1; number <= count; ++number) {
        GeneratedMotif motif{"M" + std::to_string(number), {}};
        const std::size_t length = 3 + random() % 12;
        for (std::size_t position = 0; position < length; ++position) {
            const std::size_t first = random() % (sites + 1);
            const std::size_t second = random() % (sites + 1 - first);
            const std::size_t third = random() % (sites + 1 - first - second);
            motif.columns.push_back({std::to_string(first), std::to_string(second) + ".50", std::to_string(third),
                                     std::to_string(sites - first - second - third) + ".50"});
        }
        motifs.push_back(std::move(motif));
    }
    return motifs;
}

std::string fileOf(Layout layout, const std::vector<GeneratedMotif>& motifs) {
    std::string text = headOf(layout);
    for (const GeneratedMotif& motif : motifs) text += entryOf(layout, motif);
    return text;
}

GeneratedLetters generatedConsensus(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    GeneratedLetters letters;
    for (std::size_t number = 1; number <= count; ++number) {
        letters.ids.push_back("C" + std::to_string(number));
        letters.strings.push_back((number == 1 ? "RY" : "AC") + drawn("ACGTRYSWKMBDHVNacgtrn", random() % 10, random));
        letters.file += ">" + letters.ids.back() + " name\n" + letters.strings.back() + "\n";
    }
    return letters;
}

GeneratedLetters generatedSites(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    GeneratedLetters letters;
    for (std::size_t number = 1; number <= count; ++number) {
        letters.ids.push_back("S" + std::to_string(number));
        letters.file += ">" + letters.ids.back() + "\n";
        const std::size_t length = 5 + random() % 10;
        std::string all;
        for (std::size_t site = 0; site < 2 + number % 5; ++site) {
            const std::string sequence = drawn("ACGT-", length, random);
            letters.file += sequence + "\n";
            all += sequence + "\n";
        }
        letters.strings.push_back(all);
    }
    return letters;
}

}  // namespace varnolix::job::test
