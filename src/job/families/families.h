#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "job/families/family_distances.h"
#include "job/families/linkage.h"
#include "run/shared_records.h"

// The families of the motifs of a job, and one common motif for each: the distances of all pairs (pair_alignment.h),
// their tree (linkage.h), cut at a height; then the motifs of each family are laid together along the tree
// (placement.h). Equal motifs, on whichever strand, are one in all of this, with their number as its weight. Tested by
// families_test.cpp.

namespace varnolix::job {

struct FamilySettings {
    Linkage linkage = Linkage::average;
    double cut = 0.5;               ///< motifs are of one family if they are joined at this height or below
    double flanks = 1.0 / 3.0;      ///< outer columns of a common motif that fewer of its members cover are cut
    std::size_t keptDistances = 0;  ///< motifs up to which the distances are kept
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
    Matrix commonMotif;                 ///< the first of its motifs lies on its forward strand
};

struct Families {
    std::vector<Family> families;        ///< by size, the largest first, then by their first motif
    std::vector<TreeMerge> merges;       ///< one fewer than motifs, by height
    std::vector<std::size_t> leafOrder;  ///< places of the motifs
    std::vector<double> distances;       ///< of all pairs, in the order of pairCell(); empty if they are not kept
    double cut = 0.0;
    std::string linkage;             ///< its name
    std::vector<std::string> notes;  ///< what the user should know, as sentences
};

/// The name of a family, by its 0-based place: family_1, family_2 ...
std::string familyName(std::size_t place);

/// The families of these motifs, at least one; the results do not depend on the number of threads.
Families familiesOf(std::span<const data> motifs, const FamilySettings& settings);

/// The same of distances that have been given all p-values of these motifs. They are used up.
Families familiesOf(std::span<const data> motifs, FamilyDistances& given, const FamilySettings& settings);

/// The families of the motifs that runJob() left, in the order of JobSources::motifs. Adds an entry to stageTimes.
Families leftFamilies(FamilyDistances& distances, const FamilySettings& settings);

}  // namespace varnolix::job
