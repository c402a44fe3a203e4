#pragma once

#include "run/shared_records.h"

// What a record does not hold itself, under the names of the fields that stand for it in the reports.

namespace varnolix {

constexpr const char* text(Direction direction) {
    return direction == Direction::forward ? "Forward" : "Backward";
}

constexpr const char* text(MatchingFormat format) {
    return format == MatchingFormat::originalMotif ? "Original Motif" : "Reverse Complement";
}

/// The motif with this matrixID in its list.
inline const data& motifOf(const std::vector<data>& motifs, int matrixID) {
    return motifs[static_cast<std::size_t>(matrixID - 1)];
}

/// Id of the motif of the pair's outer loop. Dataset numbers 1 and 2 of a record are those of the outer and the inner
/// motif, whichever of the two is stored first, while ids, names and motif numbers follow the order of storing.
inline int outerMatrixID(const dataCombinedScore& record) {
    return record.primaryFlag == PrimaryFlag::yes ? record.matrixID1 : record.matrixID2;
}

inline int innerMatrixID(const dataCombinedScore& record) {
    return record.primaryFlag == PrimaryFlag::yes ? record.matrixID2 : record.matrixID1;
}

}  // namespace varnolix
