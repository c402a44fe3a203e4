#include "input/readers.h"

namespace varnolix {

Matrix matrixOfHorizontalRows(const Block& rows) {
    Matrix matrix;
    matrix.reserve(rows[0].size());
    for (std::size_t position = 0; position < rows[0].size(); ++position) {
        matrix.push_back(frequencies({parseNumber(rows[0][position]), parseNumber(rows[1][position]),
                                      parseNumber(rows[2][position]), parseNumber(rows[3][position])}));
    }
    return matrix;
}

void readMatrixHInput(const Block& rows, int fileIndex) {
    appendMotif("NA", matrixOfHorizontalRows(rows), fileIndex);
}

}  // namespace varnolix
