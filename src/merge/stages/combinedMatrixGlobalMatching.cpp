#include "merge/stages.h"

#include "merge/merge_group.h"

namespace varnolix {

void combinedMatrixGlobalMatching(const std::vector<dataCombinedScore>& group) {
    mergeInputGroup(group, mergedMotifList, mergedMotifGlobalMatching);
}

}  // namespace varnolix
