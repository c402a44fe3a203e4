#include "report/writeMotifImage.h"

#include "report/motif_logos.h"

namespace varnolix {

void writeMotifImage(const Matrix& matrix, long id) {
    drawLogos(matrix, 'M', id);
}

}  // namespace varnolix
