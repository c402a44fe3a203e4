#include "merge/stages.h"

#include "merge/merge_group.h"

namespace varnolix {

void combinedMatrixGlobalAndLocalMatching(const std::vector<dataCombinedScore>& group) {
    mergeInputGroup(group, mergedMotifListGlobalAndLocal, mergedMotifGlobalAndLocalMatching);
}

}  // namespace varnolix
