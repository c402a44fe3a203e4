#include "report/stages.h"

#include "report/page/motif_logos.h"

namespace varnolix {

std::optional<OutputTrouble> writeDatabaseMotifImage(const Matrix& matrix, long id) {
    return drawLogos(matrix, 'D', id);
}

}  // namespace varnolix
