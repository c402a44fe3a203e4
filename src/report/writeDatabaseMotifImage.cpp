#include "report/writeDatabaseMotifImage.h"

#include "report/motif_logos.h"

namespace varnolix {

void writeDatabaseMotifImage(const Matrix& matrix, long id) {
    drawLogos(matrix, 'D', id);
}

}  // namespace varnolix
