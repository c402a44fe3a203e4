#pragma once

#include <ostream>
#include <span>
#include <string>

#include "job/tables/job_results.h"
#include "job/tables/pair_placement.h"
#include "job/tables/table.h"

// The table of matches: one row for each match of each ranked list, in the order of the reports.

namespace varnolix::job {

struct MatchRow {
    ListKind list;
    int queryRank;  ///< 1-based, within the list
    int matchRank;  ///< 1-based, within the query's matches
    const data& query;
    const data& target;
    MotifNames queryNames;
    MotifNames targetNames;
    const dataCombinedScore& record;
    PairPlacement placement;
    FramedLetters letters;
    bool isPrinted;  ///< whether the reports show it
};

std::span<const TableColumn<MatchRow>> matchColumns();

/// The row of a match of a list.
/// @param queryRank,matchRank 1-based
MatchRow matchRow(const JobResults& results, const RankedList& list, int queryRank, int matchRank);

/// How many matches there are of each kind of list.
CountsOfLists matchCounts(const JobResults& results);

/// Writes all matches in both notations, each row once.
void writeMatches(std::ostream& tsv, std::ostream& json, const JobResults& results);

}  // namespace varnolix::job
