#include "report/stages.h"

#include "report/page/motif_logos.h"

namespace varnolix {

void writeDatabaseMotif() {
    drawAllLogos(DatabaseDatasets, writeDatabaseMotifImage);
}

}  // namespace varnolix
