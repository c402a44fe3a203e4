#include "report/stages.h"

#include "report/page/motif_logos.h"

namespace varnolix {

void writeDatabaseMotifImage(const Matrix& matrix, long id) {
    endOnTrouble(drawLogos(matrix, 'D', id));
}

}  // namespace varnolix
