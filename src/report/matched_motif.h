#pragma once

#include "report/alignment_drawing.h"
#include "run/record_fields.h"

namespace varnolix {

/// Whether the reports on a collection show this match of an input motif: only if the record stores that motif first.
constexpr bool isPrintedOfCollection(const dataCombinedScore& record, long id) {
    return id == record.matrixID1;
}

/// What a report shows of one record: the matched motif, and how it aligns with the motif that owns the list.
struct MatchedMotif {
    const data& motif;
    AlignmentLines lines;
};

/// Finds the record's other motif, the one that is not `id`, and draws the alignment of the two.
/// @param owners the input motifs, where `id` is looked up
/// @param others where the matched motif is looked up: the input motifs again, or the reference collection
inline MatchedMotif matchedMotif(const dataCombinedScore& record, long id, const std::vector<data>& owners,
                                 const std::vector<data>& others) {
    const bool isSecond = id == record.matrixID1;
    const data& other = motifOf(others, isSecond ? record.matrixID2 : record.matrixID1);
    const MatchingFormat otherFormat = isSecond ? record.matchingFormat2 : record.matchingFormat1;
    return {other,
            drawAlignment(other, otherFormat, motifOf(owners, static_cast<int>(id)), record.matchingFormat1,
                          record.direction, static_cast<int>(record.position), static_cast<int>(record.overlap))};
}

}  // namespace varnolix
