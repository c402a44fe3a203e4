#include "input/readers.h"

namespace varnolix {

bool isTransfacPosition(const Row& row) {
    return (row.size() == 5 || row.size() == 6) && fourNumeric(row, 1);
}

Matrix matrixOfTransfacLines(std::span<const Row> rows) {
    Matrix matrix;
    for (const Row& row : rows) {
        if (isTransfacPosition(row)) matrix.push_back(frequenciesOfTokens(row, 1));
    }
    return matrix;
}

void readTransfacInput(const Block& rows, int fileIndex) {
    appendMotif(std::string(rows[0][1]), matrixOfTransfacLines(rows), fileIndex);
}

}  // namespace varnolix
