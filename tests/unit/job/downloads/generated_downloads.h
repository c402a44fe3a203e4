#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "job/downloads/download.h"

// Motifs made by chance, written in every layout by code that the program does not share.

namespace varnolix::job::test {

/// What a layout can keep of a motif.
struct GeneratedMotif {
    std::string id;
    std::vector<NumberColumn> columns;
};

/// Layouts whose files say any numbers: all but sites and consensus.
inline constexpr Layout numberLayouts[] = {Layout::jaspar,   Layout::meme,   Layout::transfac, Layout::homer,
                                           Layout::hocomoco, Layout::cisbp,  Layout::uniprobe, Layout::clusterBuster,
                                           Layout::rows,     Layout::columns};

/// Counts with the same sum in all columns; lengths between 3 and 14.
std::vector<GeneratedMotif> generatedMotifs(std::size_t count, unsigned seed);

/// The file of all motifs in a layout of numbers.
std::string fileOf(Layout layout, const std::vector<GeneratedMotif>& motifs);

/// IUPAC strings and the file of them. The first string has letters for several bases.
struct GeneratedLetters {
    std::vector<std::string> ids;
    std::vector<std::string> strings;
    std::string file;
};

GeneratedLetters generatedConsensus(std::size_t count, unsigned seed);

/// Files of aligned sites: a block of them for each motif.
GeneratedLetters generatedSites(std::size_t count, unsigned seed);

}  // namespace varnolix::job::test
