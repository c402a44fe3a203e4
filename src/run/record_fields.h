#pragma once

#include "run/shared_records.h"

// Looks up what a record does not store itself: its motifs, and the words the reports print for its fields.

namespace varnolix {

constexpr const char* directionText(Direction direction) {
    return direction == Direction::forward ? "Forward" : "Backward";
}

constexpr const char* formatText(MatchingFormat format) {
    return format == MatchingFormat::originalMotif ? "Original Motif" : "Reverse Complement";
}

/// The motif with this matrixID in its own list.
inline const data& motifOf(const std::vector<data>& motifs, int matrixID) {
    return motifs[static_cast<std::size_t>(matrixID - 1)];
}

/// The id of the pair's motif from the outer loop of the scan. In the reports, dataset numbers 1 and 2 belong to the
/// outer and the inner motif, whichever of the two is stored first; ids, names and motif numbers follow the order in
/// which the record stores the motifs.
inline int outerMatrixID(const dataCombinedScore& record) {
    return record.primaryFlag == PrimaryFlag::yes ? record.matrixID1 : record.matrixID2;
}

/// The id of the other motif of the pair.
inline int innerMatrixID(const dataCombinedScore& record) {
    return record.primaryFlag == PrimaryFlag::yes ? record.matrixID2 : record.matrixID1;
}

}  // namespace varnolix
