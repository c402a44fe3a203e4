#include "job/tables/match_significance.h"

#include <algorithm>

#include "job/downloads/information.h"
#include "job/tables/pair_placement.h"

namespace varnolix::job {

namespace {

/// Where a match of the request stands among those of results.lists.
struct ListedPlace {
    std::size_t list;
    std::size_t match;
};

/// The input motifs compared with one list of targets.
struct Comparison {
    std::vector<QueryRequest> requests;            // one for each input motif
    std::vector<std::vector<ListedPlace>> places;  // of its listed alignments
};

ListedAlignment alignmentOf(const RankedMatch& match) {
    return {static_cast<std::size_t>(match.target.matrixID - 1), -match.placement.targetOffset,
            match.placement.query == MatchingFormat::reverseComplement,
            match.placement.target == MatchingFormat::reverseComplement, match.record.similarityScore};
}

Comparison comparisonOf(const JobResults& results, bool isCollection) {
    Comparison comparison;
    comparison.requests.resize(results.motifs.size());
    comparison.places.resize(results.motifs.size());
    for (std::size_t n = 0; n < results.motifs.size(); ++n) {
        comparison.requests[n].query = &results.motifs[n].matrix;
        if (!isCollection) comparison.requests[n].self = n;
    }
    for (std::size_t list = 0; list < results.lists.size(); ++list) {
        const RankedList& ranked = results.lists[list];
        if (isAgainstCollection(ranked.kind) != isCollection) continue;
        const auto query = static_cast<std::size_t>(ranked.matrixID - 1);
        for (std::size_t match = 0; match < ranked.matches.size(); ++match) {
            comparison.requests[query].listed.push_back(alignmentOf(rankedMatch(results, ranked, match)));
            comparison.places[query].push_back({list, match});
        }
    }
    return comparison;
}

void addNote(std::string& note, const std::string& text) {
    note += (note.empty() ? "" : "; ") + text;
}

std::string noteOf(const Matrix& query, const QueryResult& result) {
    std::string note;
    if (query.size() > mostQueryColumns) {
        addNote(note, "query of more than " + std::to_string(mostQueryColumns) + " columns, so no p-values");
    }
    if (informationOf(query) < flatBits) addNote(note, "flat query");
    if (!std::ranges::all_of(query, isUsable)) addNote(note, "query has columns without counts");
    if (result.backgroundColumns < fewBackgroundColumns) {
        addNote(note, "background of only " + std::to_string(result.backgroundColumns) + " columns");
    }
    return note;
}

void compare(const JobResults& results, bool isCollection, std::size_t best, const MatchVisitor& visit,
             JobSignificance& significance) {
    const Comparison comparison = comparisonOf(results, isCollection);
    const ColumnPool targets(isCollection ? results.references : results.motifs);
    std::vector<QueryResult> found = significanceOf(comparison.requests, targets, best, fastestKernelCode(), visit);
    for (std::size_t n = 0; n < found.size(); ++n) {
        for (std::size_t k = 0; k < comparison.places[n].size(); ++k) {
            const ListedPlace& place = comparison.places[n][k];
            significance.listed[place.list][place.match] = found[n].listed[k];
        }
        SignificanceNotes& notes = significance.notes[n];
        (isCollection ? notes.ofCollection : notes.ofInput) = noteOf(results.motifs[n].matrix, found[n]);
        if (found[n].best.empty()) continue;
        significance.lists.push_back({isCollection, static_cast<int>(n + 1), std::move(found[n].best)});
    }
}

}  // namespace

JobSignificance significanceOf(const JobResults& results, std::size_t best, const MatchVisitor& visit) {
    JobSignificance significance;
    for (const RankedList& list : results.lists) significance.listed.emplace_back(list.matches.size());
    significance.notes.resize(results.motifs.size());
    compare(results, false, best, visit, significance);
    if (!results.references.empty()) compare(results, true, best, {}, significance);
    return significance;
}

}  // namespace varnolix::job
