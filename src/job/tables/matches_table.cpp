#include "job/tables/matches_table.h"

#include <array>
#include <utility>

#include "report/matched_motif.h"
#include "report/text/text_columns.h"

namespace varnolix::job {

namespace {

using Row = MatchRow;

constexpr const char* strandRange = "forward, reverse complement";
constexpr const char* bySignificance = "by_significance";
constexpr const char* collectionBySignificance = "collection_by_significance";

constexpr TableColumn<Row> columns[] = {
    {{"list", "ranked list that the match belongs to, as the sections of the reports; or a list by significance",
      "top_global, significant, each_motif, collection, collection_global, by_significance, "
      "collection_by_significance"},
     [](const Row& row) -> Cell { return row.list; }},
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
     [](const Row& row) -> Cell { return std::int64_t{row.overlap}; }},
    {{"similarity", "mean of 1 - |x - y| over all values of the columns that face each other; higher is better",
      "0 to 1; in the lists of the reports at least the cutoff"},
     [](const Row& row) -> Cell { return row.similarity; }},
    {{"combined_score",
      "what the matches are ranked by, printed as \"Similarity score\" in the reports: the mean of the distances from "
      "the query's best similarity and longest overlap; lower is better",
      "from 0; empty in the lists by significance"},
     [](const Row& row) -> Cell { return row.combinedScore ? Cell{*row.combinedScore} : Cell{std::monostate{}}; }},
    {{"query_consensus", "consensus of the query on the strand that was compared, filled up with - to the same length",
      "IUPAC letters and -"},
     [](const Row& row) -> Cell { return row.letters.query; }},
    {{"target_consensus", "consensus of the target, below that of the query", "IUPAC letters and -"},
     [](const Row& row) -> Cell { return row.letters.target; }},
    {{"in_report",
      "whether the reports show the match; those on collections show a match only if its record begins with the query",
      "yes, no"},
     [](const Row& row) -> Cell { return row.isPrinted ? "yes" : "no"; }},
    {{"p_value",
      "chance that a target of this length, made of columns of all targets at random, fits the query as well as this "
      "one "
      "at its best, in any alignment",
      "above 0, to 1"},
     [](const Row& row) -> Cell { return row.significance.pair.pValue; }},
    {{"p_alignment", "chance that as many columns at random are as similar as those of this alignment",
      "above 0, to 1"},
     [](const Row& row) -> Cell { return row.significance.alignment; }},
    {{"e_value", "number of targets that would fit as well by chance: `p_value` times the number of targets",
      "above 0, to the number of targets"},
     [](const Row& row) -> Cell { return row.significance.pair.eValue; }},
    {{"q_value",
      "share of false matches to expect if all targets of the query that are at least as sure are taken as matches, by "
      "Benjamini and Hochberg over all targets compared",
      "above 0, to 1"},
     [](const Row& row) -> Cell { return row.significance.pair.qValue; }},
    {{"significance_note", "what to know about the p-values of the query", "text, mostly empty"},
     [](const Row& row) -> Cell { return row.note; }},
};

/// The row of a match of a ranked list. Ranks are 1-based.
MatchRow rankedRow(const JobResults& results, const RankedList& list, int queryRank, int matchRank) {
    const bool isCollection = isAgainstCollection(list.kind);
    const RankedMatch match = rankedMatch(results, list, static_cast<std::size_t>(matchRank - 1));
    return {listName(list.kind),
            queryRank,
            matchRank,
            match.query,
            match.target,
            namesOfInput(results, match.query),
            isCollection ? namesOfReference(results, match.target) : namesOfInput(results, match.target),
            match.placement,
            static_cast<int>(match.record.overlap),
            match.record.similarityScore,
            match.record.combinedScore,
            framedLetters(columnLetters(match.query, match.placement.query),
                          columnLetters(match.target, match.placement.target), match.placement.targetOffset),
            !isCollection || isPrintedOfCollection(match.record, list.matrixID),
            {},
            {}};
}

/// The row of a match of a list by significance. Ranks are 1-based.
MatchRow significantRow(const JobResults& results, const SignificanceList& list, int queryRank, int matchRank) {
    const SignificantMatch& match = list.matches[static_cast<std::size_t>(matchRank - 1)];
    const data& query = results.motifs[static_cast<std::size_t>(list.matrixID - 1)];
    const data& target = (list.isAgainstCollection ? results.references : results.motifs)[match.target];
    const PairPlacement placement{MatchingFormat::originalMotif,
                                  match.isOpposite ? MatchingFormat::reverseComplement : MatchingFormat::originalMotif,
                                  -match.shift};
    return {list.isAgainstCollection ? collectionBySignificance : bySignificance,
            queryRank,
            matchRank,
            query,
            target,
            namesOfInput(results, query),
            list.isAgainstCollection ? namesOfReference(results, target) : namesOfInput(results, target),
            placement,
            match.overlap,
            match.similarity,
            std::nullopt,
            framedLetters(columnLetters(query, placement.query),
                          match.isOpposite ? columnLetters(oppositeStrand(target.matrix))
                                           : columnLetters(target, placement.target),
                          placement.targetOffset),
            false,
            {match.pair, match.alignment},
            {}};
}

std::string_view noteOf(const JobSignificance& significance, int matrixID, bool isCollection) {
    const SignificanceNotes& notes = significance.notes[static_cast<std::size_t>(matrixID - 1)];
    return isCollection ? notes.ofCollection : notes.ofInput;
}

}  // namespace

std::span<const TableColumn<MatchRow>> matchColumns() {
    return columns;
}

CountsOfLists matchCounts(const JobResults& results) {
    CountsOfLists counts{};
    for (const RankedList& list : results.lists) {
        counts[static_cast<std::size_t>(list.kind)] += static_cast<int>(list.matches.size());
    }
    return counts;
}

void visitMatches(const JobResults& results, const JobSignificance& significance, double mostQ,
                  const std::function<void(const MatchRow&)>& visitor) {
    const auto visit = [&](const MatchRow& row) {
        if (!(row.significance.pair.qValue > mostQ)) visitor(row);
    };
    CountsOfLists queries{};
    for (std::size_t place = 0; place < results.lists.size(); ++place) {
        const RankedList& list = results.lists[place];
        const int queryRank = ++queries[static_cast<std::size_t>(list.kind)];
        for (int matchRank = 1; matchRank <= std::ssize(list.matches); ++matchRank) {
            MatchRow row = rankedRow(results, list, queryRank, matchRank);
            row.significance = significance.listed[place][static_cast<std::size_t>(matchRank - 1)];
            row.note = noteOf(significance, list.matrixID, isAgainstCollection(list.kind));
            visit(row);
        }
    }
    std::array<int, 2> significanceQueries{};
    for (const SignificanceList& list : significance.lists) {
        const int queryRank = ++significanceQueries[list.isAgainstCollection ? 1 : 0];
        for (int matchRank = 1; matchRank <= std::ssize(list.matches); ++matchRank) {
            MatchRow row = significantRow(results, list, queryRank, matchRank);
            row.note = noteOf(significance, list.matrixID, list.isAgainstCollection);
            visit(row);
        }
    }
}

void writeMatches(std::ostream& tsv, std::ostream& json, const JobResults& results, const JobSignificance& significance,
                  double mostQ) {
    std::string lines;
    std::string objects = "[";
    appendTsvHeader(lines, columns);
    const char* before = "\n";
    visitMatches(results, significance, mostQ, [&](const MatchRow& row) {
        appendTsvRow(lines, columns, row);
        objects += before;
        appendJsonRow(objects, columns, row);
        before = ",\n";
        flushWhenLarge(tsv, lines);
        flushWhenLarge(json, objects);
    });
    tsv << lines;
    json << objects << "\n]\n";
}

}  // namespace varnolix::job
