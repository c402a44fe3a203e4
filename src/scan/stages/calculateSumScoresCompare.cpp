#include "scan/stages.h"

#include "run/shared_records.h"

namespace varnolix {

void calculateSumScoresCompare() {
    // Each record gets its combinedScore when it is made, from the bounds of its motif.
    DatasetsCombinedScoreLists.isScored = true;
}

}  // namespace varnolix
