#include "job/tables/matches_table.h"

#include <utility>

#include "report/matched_motif.h"
#include "report/text/text_columns.h"

namespace varnolix::job {

namespace {

using Row = MatchRow;

constexpr const char* strandRange = "forward, reverse complement";

constexpr TableColumn<Row> columns[] = {
    {{"list", "ranked list that the match belongs to, as the sections of the reports",
      "top_global, significant, each_motif, collection, collection_global"},
     [](const Row& row) -> Cell { return listName(row.list); }},
    {{"query_rank_1based", "place of the query in its list", "whole, counted from 1"},
     [](const Row& row) -> Cell { return std::int64_t{row.queryRank}; }},
    {{"match_rank_1based", "place of the match among those of the query in this list", "whole, counted from 1"},
     [](const Row& row) -> Cell { return std::int64_t{row.matchRank}; }},
    {{"query_dataset", "data set of the query", "text"}, [](const Row& row) -> Cell { return row.queryNames.dataset; }},
    {{"query_number_1based", "number of the query in the reports (\"Motif ID\"): `motif_number_1based` in motifs.tsv",
      "whole, counted from 1"},
     [](const Row& row) -> Cell { return std::int64_t{row.query.matrixID}; }},
    {{"query_id", "name of the query as in its file", "text"},
     [](const Row& row) -> Cell { return row.queryNames.id; }},
    {{"query_name", "second name of the query, as in its file", "text, may be empty"},
     [](const Row& row) -> Cell { return row.queryNames.name; }},
    {{"query_report_name", "name of the query in the reports", "one word"},
     [](const Row& row) -> Cell { return row.queryNames.reportName; }},
    {{"target_dataset", "data set of the target, or the collection", "text"},
     [](const Row& row) -> Cell { return row.targetNames.dataset; }},
    {{"target_number_1based", "number of the target in the reports; of a motif of the collection, its place there",
      "whole, counted from 1"},
     [](const Row& row) -> Cell { return std::int64_t{row.target.matrixID}; }},
    {{"target_id", "name of the target as in its file", "text"},
     [](const Row& row) -> Cell { return row.targetNames.id; }},
    {{"target_name", "second name of the target, as in its file", "text, may be empty"},
     [](const Row& row) -> Cell { return row.targetNames.name; }},
    {{"target_report_name", "name of the target in the reports", "one word"},
     [](const Row& row) -> Cell { return row.targetNames.reportName; }},
    {{"query_orientation", "strand of the query that was compared", strandRange},
     [](const Row& row) -> Cell { return strandText(row.placement.query); }},
    {{"target_orientation", "strand of the target that was compared", strandRange},
     [](const Row& row) -> Cell { return strandText(row.placement.target); }},
    {{"orientation", "whether the same strand of both was compared (+) or not (-)", "+, -"},
     [](const Row& row) -> Cell { return orientationSign(row.placement.query, row.placement.target); }},
    {{"target_offset_0based",
      "column of the query, on the strand that was compared, that faces the first column of the target; negative if "
      "the target begins before the query",
      "whole, 0-based, from 4 - target length to query length - 4"},
     [](const Row& row) -> Cell { return std::int64_t{row.placement.targetOffset}; }},
    {{"overlap", "number of columns that face each other", "whole, from 4"},
     [](const Row& row) -> Cell { return std::int64_t{row.record.overlap}; }},
    {{"similarity", "mean of 1 - |x - y| over all values of the columns that face each other; higher is better",
      "0 to 1, at least the cutoff"},
     [](const Row& row) -> Cell { return row.record.similarityScore; }},
    {{"combined_score",
      "what the matches are ranked by, printed as \"Similarity score\" in the reports: the mean of the distances from "
      "the query's best similarity and longest overlap; lower is better",
      "from 0"},
     [](const Row& row) -> Cell { return row.record.combinedScore; }},
    {{"query_consensus", "consensus of the query on the strand that was compared, filled up with - to the same length",
      "IUPAC letters and -"},
     [](const Row& row) -> Cell { return row.letters.query; }},
    {{"target_consensus", "consensus of the target, below that of the query", "IUPAC letters and -"},
     [](const Row& row) -> Cell { return row.letters.target; }},
    {{"in_report",
      "whether the reports show the match; those on collections show a match only if its record begins with the query",
      "yes, no"},
     [](const Row& row) -> Cell { return row.isPrinted ? "yes" : "no"; }},
};

}  // namespace

std::span<const TableColumn<MatchRow>> matchColumns() {
    return columns;
}

MatchRow matchRow(const JobResults& results, const RankedList& list, int queryRank, int matchRank) {
    const dataCombinedScore& record = list.matches[static_cast<std::size_t>(matchRank - 1)];
    const bool isCollection = isAgainstCollection(list.kind);
    // Ids of the two lists may be the same, so against a collection only the flag tells which motif comes first: the
    // query is the outer one.
    const bool isQueryFirst = isCollection ? record.primaryFlag == PrimaryFlag::yes : record.matrixID1 == list.matrixID;
    const data& query = motifOf(results.motifs, list.matrixID);
    const data& target =
        motifOf(isCollection ? results.references : results.motifs, isQueryFirst ? record.matrixID2 : record.matrixID1);
    const int queryLength = static_cast<int>(query.matrix.size());
    const int targetLength = static_cast<int>(target.matrix.size());
    const PairPlacement placement =
        placementOf(record, isQueryFirst,
                    isQueryFirst ? PairLengths{queryLength, targetLength} : PairLengths{targetLength, queryLength});
    return {list.kind,
            queryRank,
            matchRank,
            query,
            target,
            namesOfInput(results, query),
            isCollection ? namesOfReference(results, target) : namesOfInput(results, target),
            record,
            placement,
            framedLetters(columnLetters(query, placement.query), columnLetters(target, placement.target),
                          placement.targetOffset),
            !isCollection || isPrintedOfCollection(record, list.matrixID)};
}

CountsOfLists matchCounts(const JobResults& results) {
    CountsOfLists counts{};
    for (const RankedList& list : results.lists) {
        counts[static_cast<std::size_t>(list.kind)] += static_cast<int>(list.matches.size());
    }
    return counts;
}

void writeMatches(std::ostream& tsv, std::ostream& json, const JobResults& results) {
    std::string lines;
    std::string objects = "[";
    appendTsvHeader(lines, columns);
    const char* before = "\n";
    CountsOfLists queries{};
    for (const RankedList& list : results.lists) {
        const int queryRank = ++queries[static_cast<std::size_t>(list.kind)];
        for (int matchRank = 1; matchRank <= std::ssize(list.matches); ++matchRank) {
            const MatchRow row = matchRow(results, list, queryRank, matchRank);
            appendTsvRow(lines, columns, row);
            objects += before;
            appendJsonRow(objects, columns, row);
            before = ",\n";
        }
        flushWhenLarge(tsv, lines);
        flushWhenLarge(json, objects);
    }
    tsv << lines;
    json << objects << "\n]\n";
}

}  // namespace varnolix::job
