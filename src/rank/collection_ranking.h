#pragma once

#include <initializer_list>
#include <vector>

#include "rank/record_source.h"
#include "report/report_passes.h"
#include "run/shared_records.h"

// The best matches of input motifs in the reference collection. Input motifs are not ranked here: all that have a match
// are listed, by ascending id.

namespace varnolix {

/// The best matches of every input motif, one list for each, which may be empty. Partners are distinguished by name, so
/// reference motifs with the same name count as one.
/// @param source gives the records of each input motif, whichever motif they store first
RecordLists matchesInCollection(const RecordSource& source, std::size_t inputMotifs,
                                const std::vector<data>& references, int mostMatches);

/// Selects the best matches and writes the sections of those reports that the output format asks for.
void writeCollectionSections(const RecordSource& source, ListKind list, const std::vector<data>& inputMotifs,
                             const std::vector<data>& references, int mostMatches,
                             std::initializer_list<ReportPass> passes);

}  // namespace varnolix
