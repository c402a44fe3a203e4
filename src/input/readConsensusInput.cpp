#include "input/readers.h"

#include <algorithm>
#include <iterator>

namespace varnolix {

namespace {

/// Three bases add up to 0.9999, not 1: the columns of consensus motifs are not divided by their sum.
constexpr double third = 0.3333;

struct LetterColumn {
    char letter;
    Column column;
};

constexpr LetterColumn letterColumns[] = {
    {'A', {1, 0, 0, 0}},
    {'C', {0, 1, 0, 0}},
    {'G', {0, 0, 1, 0}},
    {'T', {0, 0, 0, 1}},
    {'M', {0.5, 0.5, 0, 0}},
    {'R', {0.5, 0, 0.5, 0}},
    {'W', {0.5, 0, 0, 0.5}},
    {'S', {0, 0.5, 0.5, 0}},
    {'Y', {0, 0.5, 0, 0.5}},
    {'K', {0, 0, 0.5, 0.5}},
    {'V', {third, third, third, 0}},
    {'H', {third, third, 0, third}},
    {'D', {third, 0, third, third}},
    {'B', {0, third, third, third}},
    {'N', {0.25, 0.25, 0.25, 0.25}},
};

}  // namespace

Matrix matrixOfIUPAC(const Block& rows) {
    Matrix matrix;
    for (const Row& row : std::span(rows).subspan(1)) {
        if (row.size() != 1) continue;
        for (const char letter : row[0]) {
            const auto known = std::ranges::find(letterColumns, letter, &LetterColumn::letter);
            if (known != std::end(letterColumns)) matrix.push_back(known->column);  // a gap is not a position
        }
    }
    return matrix;
}

void readConsensusInput(const Block& rows, int fileIndex) {
    appendMotif(nameOrNA(rows[0][0]), matrixOfIUPAC(rows), fileIndex);
}

}  // namespace varnolix
