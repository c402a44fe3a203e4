#pragma once

#include <string>
#include <vector>

#include "job/significance/significance.h"
#include "job/tables/job_results.h"

// The p-values of the matches of a job, and its lists by significance: every input motif against all others, and
// against the collection. Tested by match_significance_test.cpp.

namespace varnolix::job {

/// The surest matches of one input motif.
struct SignificanceList {
    bool isAgainstCollection;
    int matrixID;
    std::vector<SignificantMatch> matches;
};

/// What to know about the p-values of an input motif; empty if there is nothing.
struct SignificanceNotes {
    std::string ofInput;
    std::string ofCollection;
};

struct JobSignificance {
    std::vector<std::vector<ListedProbability>> listed;  ///< for each match of results.lists
    std::vector<SignificanceList> lists;                 ///< those without matches are left out
    std::vector<SignificanceNotes> notes;                ///< for each input motif
};

/// Backgrounds of fewer columns, on both strands, are noted.
inline constexpr std::size_t fewBackgroundColumns = 200;

/// Works out the p-values of all ranked matches and the lists by significance.
/// @param best how many matches each of these lists has at most
/// @param visit is handed all matches of each input motif among the others, by their places
JobSignificance significanceOf(const JobResults& results, std::size_t best, const MatchVisitor& visit = {});

}  // namespace varnolix::job
