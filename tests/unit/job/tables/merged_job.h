#pragma once

#include <vector>

#include "job/tables/combined_motifs.h"
#include "job/tables/small_job.h"
#include "merge/stages.h"
#include "support/random_motifs.h"

namespace varnolix::testing {

/// Runs the stages up to the merging over random motifs.
class MergedJobTest : public SmallJobTest {
  protected:
    void mergeRandom(std::uint64_t seed) {
        answer();
        RandomMotifs random(seed);
        Datasets = random.motifs(16, 2);
        simCutoff = 0.8;
        combinedMotifFlag = "Y";
        compare();
        for (const auto& group : topGlobalMatchingResults) combinedMatrixGlobalMatching(group);
        for (const auto& group : topGlobalAndLocalMatchingResults) combinedMatrixGlobalAndLocalMatching(group);
        for (const auto& group : topBestMatchesResults) combinedMatrixBestMatches(group);
        sources = sourcesOfMotifs();
    }

    static std::vector<job::MergedList> lists() {
        return {{ListKind::topGlobal, topGlobalMatchingResults, mergedMotifGlobalMatching},
                {ListKind::significant, topGlobalAndLocalMatchingResults, mergedMotifGlobalAndLocalMatching},
                {ListKind::eachMotif, topBestMatchesResults, mergedMotifBestMatches}};
    }
};

}  // namespace varnolix::testing
