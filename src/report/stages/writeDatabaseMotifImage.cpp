#include "report/stages.h"

#include "report/page/motif_logos.h"

namespace varnolix {

void writeDatabaseMotifImage(const Matrix& matrix, long id) {
    drawLogos(matrix, 'D', id);
}

}  // namespace varnolix
