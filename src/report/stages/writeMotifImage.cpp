#include "report/stages.h"

#include "report/page/motif_logos.h"

namespace varnolix {

std::optional<OutputTrouble> writeMotifImage(const Matrix& matrix, long id) {
    return drawLogos(matrix, 'M', id);
}

}  // namespace varnolix
