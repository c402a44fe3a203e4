#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "job/families/linkage.h"
#include "job/job_motif.h"
#include "run/shared_records.h"

// The families of the motifs of a job, and one common motif for each. Tested by families_test.cpp.

namespace varnolix::job {

struct FamilySettings {
    Linkage linkage = Linkage::average;
    double cut = 0.5;           ///< motifs are of one family if they are joined at this height or below
    double flanks = 1.0 / 3.0;  ///< outer columns of a common motif that fewer of its members cover are cut
};

struct FamilyMember {
    std::size_t motif = 0;    ///< place in JobSources::motifs
    bool isReversed = false;  ///< whether its true reverse complement was taken
    int offset = 0;           ///< column of the common motif at which the member's first column stands, on its strand;
                              ///< negative if it begins before, as flanks are cut
    double distance = 0.0;    ///< to the common motif
};

struct Family {
    std::vector<FamilyMember> members;  ///< in the order of the tree's leaves
    double cutHeight = 0.0;             ///< at which all are joined; 0 for a single one
    Matrix commonMotif;
};

struct Families {
    std::vector<Family> families;        ///< by size, the largest first, then by their first motif
    std::vector<TreeMerge> merges;       ///< one fewer than motifs, by height
    std::vector<std::size_t> leafOrder;  ///< places of the motifs
    double cut = 0.0;
    std::string linkage;             ///< its name
    std::vector<std::string> notes;  ///< what the user should know, as sentences
};

/// The name of a family, by its 0-based place: family_1, family_2 ...
std::string familyName(std::size_t place);

/// The families of the motifs that runJob() left, in the order of sources.motifs. Adds an entry to stageTimes.
Families familiesOf(const JobSources& sources, const FamilySettings& settings);

}  // namespace varnolix::job
