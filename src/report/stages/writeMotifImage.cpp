#include "report/stages.h"

#include "report/page/motif_logos.h"

namespace varnolix {

void writeMotifImage(const Matrix& matrix, long id) {
    endOnTrouble(drawLogos(matrix, 'M', id));
}

}  // namespace varnolix
