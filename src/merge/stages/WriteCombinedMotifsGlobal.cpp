#include "merge/stages.h"

#include "merge/combined_report.h"

namespace varnolix {

void WriteCombinedMotifsGlobal() {
    writeCombinedGroups(reports::combinedGlobal, mergedMotifGlobalMatching,
                        " Combined Motifs for Top Global Significant Motif ID ");
}

}  // namespace varnolix
