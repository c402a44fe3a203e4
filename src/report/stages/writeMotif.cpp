#include "report/stages.h"

namespace varnolix {

void writeMotif() {
    for (const data& motif : Datasets) writeMotifImage(motif.matrix, motif.matrixID);
}

}  // namespace varnolix
