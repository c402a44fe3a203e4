#include "input/readers.h"

namespace varnolix {

Matrix matrixOfVerticalRows(const Block& rows) {
    Matrix matrix;
    for (const Row& row : rows) {
        if (row.size() == 4) matrix.push_back(frequenciesOfTokens(row, 0));
    }
    return matrix;
}

void readMatrixVInput(const Block& rows, int fileIndex) {
    appendMotif("NA", matrixOfVerticalRows(rows), fileIndex);
}

}  // namespace varnolix
