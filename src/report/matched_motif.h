#pragma once

#include "report/alignment_drawing.h"
#include "run/record_fields.h"

namespace varnolix {

/// What a report shows of one record: the matched motif and how it lies on the motif that the list belongs to.
struct MatchedMotif {
    const data& motif;
    AlignmentLines lines;
};

/// The motif of the record that is not the one with this id, and the drawing of the two.
/// @param others the list that holds the matched motif: Datasets, or the reference collection
inline MatchedMotif matchedMotif(const dataCombinedScore& record, long id, const std::vector<data>& others) {
    const bool isSecond = id == record.matrixID1;
    const data& other = motifOf(others, isSecond ? record.matrixID2 : record.matrixID1);
    const MatchingFormat otherFormat = isSecond ? record.matchingFormat2 : record.matchingFormat1;
    return {other,
            drawAlignment(other, otherFormat, motifOf(Datasets, static_cast<int>(id)), record.matchingFormat1,
                          record.direction, static_cast<int>(record.position), static_cast<int>(record.overlap))};
}

}  // namespace varnolix
