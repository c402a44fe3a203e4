#pragma once

#include <array>
#include <iterator>
#include <string_view>
#include <vector>

#include "job/job_motif.h"
#include "job/tables/pair_placement.h"
#include "run/shared_records.h"

namespace varnolix::job {

/// What the tables are made of: what the job compares, and what the stages left.
struct JobResults {
    const JobSources& sources;
    const std::vector<data>& motifs;      ///< in the order of sources.motifs
    const std::vector<data>& references;  ///< in the order of sources.references
    const std::vector<RankedList>& lists;
};

/// How a motif is named in the tables.
struct MotifNames {
    std::string_view dataset;     ///< the name of its data set, or of the collection
    std::string_view id;          ///< as in the download
    std::string_view name;        ///< the second name; empty if there is none
    std::string_view reportName;  ///< one word
};

MotifNames namesOfInput(const JobResults& results, const data& motif);
MotifNames namesOfReference(const JobResults& results, const data& motif);

inline constexpr ListKind listKinds[] = {ListKind::topGlobal, ListKind::significant, ListKind::eachMotif,
                                         ListKind::collection, ListKind::collectionGlobal};

/// A number for each kind of list.
using CountsOfLists = std::array<int, std::size(listKinds)>;

/// The name of a list in the tables.
const char* listName(ListKind kind);

/// Whether the list compares input motifs with the collection.
constexpr bool isAgainstCollection(ListKind kind) {
    return kind == ListKind::collection || kind == ListKind::collectionGlobal;
}

/// A match of a ranked list, with both motifs by their roles.
struct RankedMatch {
    const data& query;
    const data& target;
    const dataCombinedScore& record;
    PairPlacement placement;
};

/// @param place 0-based, among the matches of the list
RankedMatch rankedMatch(const JobResults& results, const RankedList& list, std::size_t place);

}  // namespace varnolix::job
