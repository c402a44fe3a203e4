#pragma once

#include <string>

#include "run/shared_records.h"
#include "scan/region_rule.h"

// How the two motifs of a record really lie. Records and reports name the formats by the motifs of the two loops, and
// count positions from either end; here both motifs are named by their roles, query and target, and everything is
// counted from the query's first column.

namespace varnolix::job {

struct PairPlacement {
    MatchingFormat query;   ///< the strand of the query that was compared
    MatchingFormat target;  ///< that of the target
    int targetOffset;       ///< column of the query, 0-based, that faces the target's first column; may be negative
};

/// @param isQueryFirst whether the query is the motif that the record stores first
/// @param lengths of the motif stored first and of the one stored second
constexpr PairPlacement placementOf(const dataCombinedScore& record, bool isQueryFirst, PairLengths lengths) {
    // The first format belongs to the outer motif, wherever the record stores that one.
    const bool isFirstOuter = record.primaryFlag == PrimaryFlag::yes;
    const bool isQueryOuter = isQueryFirst == isFirstOuter;
    // The motif stored first slides. The rule from shift to offset is its own inverse.
    const int shift = offsetAt(record.direction, Sliding::left, lengths, static_cast<int>(record.position) - 1);
    return {isQueryOuter ? record.matchingFormat1 : record.matchingFormat2,
            isQueryOuter ? record.matchingFormat2 : record.matchingFormat1, isQueryFirst ? -shift : shift};
}

constexpr const char* strandText(MatchingFormat format) {
    return format == MatchingFormat::originalMotif ? "forward" : "reverse complement";
}

/// "+" if the same strand of both motifs was compared, else "-".
constexpr const char* orientationSign(MatchingFormat one, MatchingFormat other) {
    return one == other ? "+" : "-";
}

inline const Matrix& strandOf(const data& motif, MatchingFormat format) {
    return format == MatchingFormat::originalMotif ? motif.matrix : motif.revCompMatrix;
}

/// The consensus of a strand with exactly one letter for each column; "N" where the consensus has none.
std::string columnLetters(const data& motif, MatchingFormat format);
/// The same for any columns.
std::string columnLetters(const Matrix& matrix);

/// The letters of both motifs, one above the other, filled up with "-" to the same length.
struct FramedLetters {
    std::string query;
    std::string target;
};

FramedLetters framedLetters(const std::string& query, const std::string& target, int targetOffset);

}  // namespace varnolix::job
