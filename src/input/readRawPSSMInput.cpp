#include "input/readers.h"

namespace varnolix {

Matrix matrixOfNumericRows(const Block& rows) {
    Matrix matrix;
    for (const Row& row : rows) {
        if (row.size() == 4 && fourNumeric(row, 0)) matrix.push_back(frequenciesOfTokens(row, 0));
    }
    return matrix;
}

void readRawPSSMInput(const Block& rows, int fileIndex) {
    appendMotif(nameOrNA(rows[0][0]), matrixOfNumericRows(rows), fileIndex);
}

}  // namespace varnolix
