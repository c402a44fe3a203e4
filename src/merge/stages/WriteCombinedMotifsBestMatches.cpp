#include "merge/stages.h"

#include "merge/combined_report.h"

namespace varnolix {

void WriteCombinedMotifsBestMatches() {
    writeCombinedGroups(reports::combinedBestMatches, mergedMotifBestMatches, " Combined Motifs for Motif ID ");
}

}  // namespace varnolix
