#include "merge/stages.h"

#include "merge/merge_group.h"

namespace varnolix {

void combinedMatrixBestMatches(const std::vector<dataCombinedScore>& group) {
    mergeInputGroup(group, mergedMotifListBestMatches, mergedMotifBestMatches);
}

}  // namespace varnolix
