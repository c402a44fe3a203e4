#include "scan/stages.h"

#include "run/shared_records.h"

namespace varnolix {

void calculateSumScoresCompareDatabase() {
    // Each record gets its combinedScore when it is made, from the bounds of its motif.
    DatasetsCombinedScoreDatabaseLists.isScored = true;
}

}  // namespace varnolix
