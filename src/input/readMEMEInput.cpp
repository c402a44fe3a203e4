#include "input/readers.h"

namespace varnolix {

void readMEMEInput(const Block& rows, int fileIndex) {
    appendMotif("Motif " + std::to_string(matrixIDNum), matrixOfNumericRows(rows), fileIndex);
}

}  // namespace varnolix
