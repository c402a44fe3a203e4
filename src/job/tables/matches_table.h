#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <span>
#include <string>

#include "job/tables/job_results.h"
#include "job/tables/match_significance.h"
#include "job/tables/pair_placement.h"
#include "job/tables/table.h"

// The table of matches: one row for each match of each ranked list, in the order of the reports, and then of each list
// by significance.

namespace varnolix::job {

struct MatchRow {
    const char* list;
    int queryRank;  ///< 1-based, within the list
    int matchRank;  ///< 1-based, within the query's matches
    const data& query;
    const data& target;
    MotifNames queryNames;
    MotifNames targetNames;
    PairPlacement placement;
    int overlap;
    double similarity;
    std::optional<double> combinedScore;  ///< of the matches of the reports
    FramedLetters letters;
    bool isPrinted;  ///< whether the reports show it
    ListedProbability significance;
    std::string_view note;  ///< on the p-values
};

std::span<const TableColumn<MatchRow>> matchColumns();

/// Calls the visitor with every match of every list, in the order of the table.
/// @param mostQ matches with a higher q-value are left out
void visitMatches(const JobResults& results, const JobSignificance& significance, double mostQ,
                  const std::function<void(const MatchRow&)>& visitor);

/// How many matches there are of each kind of list.
CountsOfLists matchCounts(const JobResults& results);

/// Writes the matches in both notations, each row once.
/// @param mostQ matches with a higher q-value are left out
void writeMatches(std::ostream& tsv, std::ostream& json, const JobResults& results, const JobSignificance& significance,
                  double mostQ);

}  // namespace varnolix::job
