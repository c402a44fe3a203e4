#include "input/readConsensusInput.h"

#include <optional>

namespace varnolix {

namespace {

/// Three bases share 0.9999, not 1: the columns of consensus motifs are not divided by their sum.
constexpr double third = 0.3333;

std::optional<Column> columnOfLetter(char letter) {
    switch (letter) {
        case 'A':
            return Column{1, 0, 0, 0};
        case 'C':
            return Column{0, 1, 0, 0};
        case 'G':
            return Column{0, 0, 1, 0};
        case 'T':
            return Column{0, 0, 0, 1};
        case 'M':
            return Column{0.5, 0.5, 0, 0};
        case 'R':
            return Column{0.5, 0, 0.5, 0};
        case 'W':
            return Column{0.5, 0, 0, 0.5};
        case 'S':
            return Column{0, 0.5, 0.5, 0};
        case 'Y':
            return Column{0, 0.5, 0, 0.5};
        case 'K':
            return Column{0, 0, 0.5, 0.5};
        case 'V':
            return Column{third, third, third, 0};
        case 'H':
            return Column{third, third, 0, third};
        case 'D':
            return Column{third, 0, third, third};
        case 'B':
            return Column{0, third, third, third};
        case 'N':
            return Column{0.25, 0.25, 0.25, 0.25};
        default:
            return std::nullopt;  // a gap is no position
    }
}

}  // namespace

Matrix matrixOfIUPAC(const Block& rows) {
    Matrix matrix;
    for (const Row& row : std::span(rows).subspan(1)) {
        if (row.size() != 1) continue;
        for (const char letter : row[0]) {
            if (const std::optional<Column> column = columnOfLetter(letter)) matrix.push_back(*column);
        }
    }
    return matrix;
}

void readConsensusInput(const Block& rows, int fileIndex) {
    appendMotif(nameOrNA(rows[0][0]), matrixOfIUPAC(rows), fileIndex);
}

}  // namespace varnolix
