#pragma once

#include <cstddef>
#include <cstdint>

namespace varnolix {

/// Which strands of the two motifs of a pair were compared, in the order in which ties are settled. "First" is the
/// motif of the outer loop.
enum class Orientation : std::uint8_t { bothOriginal, secondReversed, firstReversed, bothReversed };

/// Which of the two scans meets an alignment.
enum Walks : std::uint8_t { forwardWalk = 1, backwardWalk = 2, bothWalks = 3 };

/// One way to lay two motifs on each other: column k of the left motif faces column k + shift of the right one, over
/// all columns that have a partner. The forward and the backward scan, and both regions of a pair, meet the same
/// alignments, so one of these stands for every record that is made of it.
struct ScoredShift {
    double score;                ///< the best of the four orientation scores
    std::int32_t shift;          ///< column k of the left motif faces column k + shift of the right one
    std::uint32_t partner : 28;  ///< index of the right motif in its list
    Orientation orientation : 2;
    Walks walks : 2;  ///< sums in another order may differ in the last bit where values lie outside [0, 1]
};
/// What fits ScoredShift::partner.
inline constexpr std::uint32_t partnerMask = (1U << 28U) - 1U;
static_assert(sizeof(ScoredShift) == 16);

/// The same alignment with the right motif as the left one, and the left one, told by its index, as the partner.
constexpr ScoredShift seenFromPartner(ScoredShift kept, std::size_t left) {
    kept.shift = -kept.shift;
    kept.partner = static_cast<std::uint32_t>(left) & partnerMask;
    return kept;
}

}  // namespace varnolix
