#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "job/families/linkage.h"
#include "job/job_motif.h"
#include "job/significance/column_pool.h"
#include "run/shared_records.h"

// The families of the motifs of a job, and one common motif for each: the distances of all pairs (pair_alignment.h),
// their tree (linkage.h), cut at a height; then the motifs of each family are laid together along the tree
// (placement.h). Equal motifs, on whichever strand, are one in all of this, with their number as its weight. Tested by
// families_test.cpp.

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
    Matrix commonMotif;                 ///< the first of its motifs lies on its forward strand
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

/// The distances of all pairs of the pool's targets, in the order of pairCell().
std::vector<double> familyDistances(std::span<const data> motifs, const ColumnPool& pool);

/// The families of these motifs, at least one; the results do not depend on the number of threads.
Families familiesOf(std::span<const data> motifs, const FamilySettings& settings);

/// Those of the motifs that runJob() left, in the order of sources.motifs. Adds an entry to stageTimes.
Families familiesOf(const JobSources& sources, const FamilySettings& settings);

/// Throws JobError if the distances of so many motifs, of which no two are equal, do not fit the memory that is left.
void requireMemoryForFamilies(std::size_t motifs);

/// How many motifs differ from all before them, on both strands.
std::size_t differentMotifs(const JobSources& sources);

}  // namespace varnolix::job
