#pragma once

#include <span>
#include <string>
#include <vector>

#include "job/downloads/download.h"
#include "job/families/families.h"
#include "job/tables/job_results.h"
#include "job/tables/table.h"

// The families of a job as tables, as motifs for other programs, and as a tree. Tested by family_tables_test.cpp.

namespace varnolix::job {

struct FamilyRow {
    std::string name;
    const Family& family;
    std::string members;  ///< report names, with blanks between them
    std::string consensus;
    double bits;
};

struct FamilyMemberRow {
    std::string family;
    const FamilyMember& member;
    const data& motif;
    MotifNames names;
};

std::span<const TableColumn<FamilyRow>> familyColumns();
std::span<const TableColumn<FamilyMemberRow>> familyMemberColumns();

std::string familiesTsv(const Families& families, const JobResults& results);
std::string familyMembersTsv(const Families& families, const JobResults& results);

/// The common motifs in the order of the families. The second name is that of the member that is nearest to it.
std::vector<DownloadedMotif> familyMotifs(const Families& families, const JobResults& results);

/// The tree as Newick: two motifs are joined at half their distance, and leaves are named as in the other trees. A node
/// that holds exactly the members of a family, and more than one, has the family's name.
std::string familyTree(const Families& families, const JobResults& results);

}  // namespace varnolix::job
