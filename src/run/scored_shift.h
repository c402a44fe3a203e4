#pragma once

#include <cstddef>
#include <cstdint>

namespace varnolix {

/// Which strands of the two motifs of a pair were compared. Of equal scores, the orientation that comes first here
/// wins. "First" is the motif of the outer loop.
enum class Orientation : std::uint8_t { bothOriginal, secondReversed, firstReversed, bothReversed };

/// Which of the two scans finds an alignment.
enum Walks : std::uint8_t { forwardWalk = 1, backwardWalk = 2, bothWalks = 3 };

/// One alignment of two motifs, described by a single number: column k of the left motif faces column k + shift of the
/// right one, for all columns that have a partner. The forward and the backward scan, and both regions of a pair, find
/// the same alignments, so one ScoredShift serves for all records that are made from it.
struct ScoredShift {
    double score;                ///< the best of the four orientation scores
    std::int32_t shift;          ///< column k of the left motif faces column k + shift of the right one
    std::uint32_t partner : 28;  ///< index of the right motif in its list
    Orientation orientation : 2;
    Walks walks : 2;  ///< the scans may disagree for values outside [0, 1], where the order of addition matters
};
/// The largest index that fits ScoredShift::partner.
inline constexpr std::uint32_t partnerMask = (1U << 28U) - 1U;
static_assert(sizeof(ScoredShift) == 16);

/// The same alignment as seen from the right motif; the partner is now the left motif, whose index is given.
constexpr ScoredShift seenFromPartner(ScoredShift kept, std::size_t left) {
    kept.shift = -kept.shift;
    kept.partner = static_cast<std::uint32_t>(left) & partnerMask;
    return kept;
}

}  // namespace varnolix
