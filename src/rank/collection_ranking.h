#pragma once

#include <initializer_list>
#include <vector>

#include "rank/record_source.h"
#include "report/report_passes.h"
#include "run/shared_records.h"

// The best matches of input motifs in the reference collection. Motifs are not ranked here: each one with a match is
// listed, by its id.

namespace varnolix {

/// The best matches of every input motif, empty lists among them. Partners are told apart by their names, so reference
/// motifs of one name count as one.
/// @param source gives the records of each input motif, whichever motif they store first
RecordLists matchesInCollection(const RecordSource& source, std::size_t inputMotifs,
                                const std::vector<data>& references, int mostMatches);

/// Selects the best matches and writes the sections of those reports that the output format asks for.
void writeCollectionSections(const RecordSource& source, ListKind list, const std::vector<data>& inputMotifs,
                             const std::vector<data>& references, int mostMatches,
                             std::initializer_list<ReportPass> passes);

}  // namespace varnolix
