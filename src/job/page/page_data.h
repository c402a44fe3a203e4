#pragma once

#include <span>
#include <string>
#include <vector>

#include "job/families/families.h"
#include "job/tables/combined_motifs.h"
#include "job/tables/job_record.h"
#include "job/tables/match_significance.h"

// What the page of a job shows, as JSON. tools/page/data.js reads it.

namespace varnolix::job {

/// A tree and the distances that it is made of, as text.
struct PageTree {
    std::string name;
    std::string newick;         ///< empty if it could not be written
    std::string distances;      ///< distanceRows(); empty if the page does not show them
    bool isOfFamilies = false;  ///< whether the families are cut from it
};

struct PageContent {
    std::string jobName;
    const JobRecord& record;  ///< `written` are the files that the page links to
    const std::vector<SkippedMotif>& skipped;
    const JobSignificance& significance;
    double mostQ;  ///< matches with a higher q-value are left out
    std::vector<MergedList> merged;
    std::vector<PageTree> trees;
    const Families* families = nullptr;  ///< none if the job makes none
};

/// More rows than that would make the page too heavy for a browser. It says so, and names the table that has them all.
inline constexpr std::size_t mostMatchesOfPage = 100'000;

/// Motifs up to which the page has a heat map of the distances of the matches.
inline constexpr std::size_t mostMotifsOfHeatMap = 500;

/// The same for the distances of the families. Those of 1,000 motifs take 4 MB of the page.
inline constexpr std::size_t mostMotifsOfFamilyMap = 1000;

std::string pageData(const PageContent& content, const JobResults& results);

/// The lower half of a table of distances as a list of rows, from the second one on, in the order of the motifs, with
/// four digits behind the point. A cell that is no number becomes null.
/// @param table as the tree stage writes it
std::string distanceRows(const std::string& table);
/// @param pairs in the order of pairCell()
std::string distanceRows(std::span<const double> pairs);

/// The families with their members and their common motifs.
std::string familiesJson(const Families& families, const JobResults& results);

/// The matrix as a flat list of A, C, G, T by position, with six digits. A position without counts has nulls.
std::string matrixJson(const Matrix& matrix);

/// The pair that changes places in each position when the reverse complement is made, by position of the motif as it
/// is: "w" for A and T, "s" for C and G.
std::string swappedPairs(const Matrix& matrix);

}  // namespace varnolix::job
