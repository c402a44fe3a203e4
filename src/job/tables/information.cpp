#include "job/tables/information.h"

#include <cmath>

namespace varnolix::job {

double informationBits(const Matrix& matrix) {
    double bits = 0;
    for (const Column& column : matrix) {
        bits += 2;
        for (const double share : column) {
            if (share > 0) bits += share * std::log2(share);
        }
    }
    return bits;
}

}  // namespace varnolix::job
