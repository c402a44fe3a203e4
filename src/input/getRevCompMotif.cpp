#include "input/getRevCompMotif.h"

#include <utility>

namespace varnolix {

bool swapsAT(const Column& column) {
    std::size_t best = 0;
    double most = 0.0;
    for (std::size_t base = 0; base < column.size(); ++base) {
        if (column[base] > most) {
            most = column[base];
            best = base;
        }
    }
    return best == 0 || best == 3;
}

Matrix getRevCompMotif(const Matrix& matrix) {
    Matrix reversed(matrix.rbegin(), matrix.rend());
    for (Column& column : reversed) {
        if (swapsAT(column)) {
            std::swap(column[0], column[3]);
        } else {
            std::swap(column[1], column[2]);
        }
    }
    return reversed;
}

}  // namespace varnolix
