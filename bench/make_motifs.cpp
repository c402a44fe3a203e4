#include <cstdlib>
#include <fstream>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "motif_source.h"

// make_motifs COUNT FILE...: writes COUNT motifs, divided equally among the files.

int main(int argumentCount, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    const std::size_t motifs = words.empty() ? 0 : std::strtoul(words[0].c_str(), nullptr, 10);
    const std::size_t files = words.empty() ? 0 : words.size() - 1;
    if (motifs == 0 || files == 0) {
        std::cerr << "usage: make_motifs COUNT FILE...\n";
        return 2;
    }
    const std::vector<varnolix::Matrix> counts = varnolix::bench::countMatrices(motifs);
    for (std::size_t file = 0; file < files; ++file) {
        const std::size_t first = motifs * file / files;
        const std::size_t last = motifs * (file + 1) / files;
        std::ofstream stream(words[file + 1]);
        varnolix::bench::writeJaspar(stream, std::span(counts).subspan(first, last - first), first + 1);
        if (!stream.flush()) {
            std::cerr << "cannot write " << words[file + 1] << '\n';
            return 1;
        }
    }
    return 0;
}
