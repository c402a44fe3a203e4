#include "report/stages.h"

#include "report/page/motif_logos.h"

namespace varnolix {

void writeMotif() {
    drawAllLogos(Datasets, writeMotifImage);
}

}  // namespace varnolix
