#include "scan/stages.h"

#include "run/shared_records.h"

namespace varnolix {

void calculateSumScoresCompareDatabaseGlobal() {
    // Each record gets its combinedScore when it is made, from the bounds of its motif.
    DatasetsCombinedScoreDatabaseGlobalLists.isScored = true;
}

}  // namespace varnolix
