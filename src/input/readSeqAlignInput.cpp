#include "input/readers.h"

namespace varnolix {

Matrix matrixOfAlignment(const Block& rows) {
    constexpr std::string_view bases = "ACGT";
    const std::span sequences = std::span(rows).subspan(1);
    Matrix matrix;
    for (std::size_t position = 0; position < sequences[0][0].size(); ++position) {
        Column counts{};
        for (const Row& sequence : sequences) {
            const std::size_t base = bases.find(sequence[0][position]);
            if (base != std::string_view::npos) counts[base] += 1;
        }
        matrix.push_back(frequencies(counts));
    }
    return matrix;
}

void readSeqAlignInput(const Block& rows, int fileIndex) {
    appendMotif(nameOrNA(rows[0][0]), matrixOfAlignment(rows), fileIndex);
}

}  // namespace varnolix
