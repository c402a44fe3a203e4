#include "merge/stages.h"

#include "merge/combined_report.h"

namespace varnolix {

void WriteCombinedMotifsGlobalAndLocal() {
    writeCombinedGroups(reports::combinedGlobalAndLocal, mergedMotifGlobalAndLocalMatching,
                        " Combined Motifs for Top Global and Local Significant Motif ID ");
}

}  // namespace varnolix
