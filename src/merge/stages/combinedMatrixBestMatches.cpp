#include "merge/stages.h"

#include "merge/merge_group.h"

namespace varnolix {

void combinedMatrixBestMatches(const std::vector<dataCombinedScore>& group) {
    mergeGroup(group, mergedMotifListBestMatches, mergedMotifBestMatches);
}

}  // namespace varnolix
