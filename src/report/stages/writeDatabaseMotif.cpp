#include "report/stages.h"

namespace varnolix {

void writeDatabaseMotif() {
    for (const data& motif : DatabaseDatasets) writeDatabaseMotifImage(motif.matrix, motif.matrixID);
}

}  // namespace varnolix
