#include "scan/pair_kernel.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "scan/pair_kernel_stages.h"

// All alignments of two motifs, forward or backward, first or second region, are the diagonals of one table of column
// pairs, and each is scored once.
//
// Exact sums in integers. For x, y in [0, 1] a cell c = RN(1 - RN|x - y|) is a multiple of 2^-53: if |x - y| <= 1/2 the
// difference lies in [1/2, 1], where doubles are that far apart; otherwise |x - y| is itself a multiple of 2^-53 and 1
// minus it is exact. At most 4 * 255 cells of at most 2^53 units stay below 2^63, so 64-bit integers hold their sum in
// any order, and an extended accumulator holds it too: both are the same number. Dividing it in extended precision and
// rounding to double gives the mean of the plain form; as this is monotone, the cutoff becomes a least sum per length,
// and only kept alignments are divided.
//
// Filter in bytes. Each value is rounded to X = round(255 x), so |X - 255 x| <= 1/2 (and less than 2^-44 more by the
// arithmetic), and the distance sum |X - Y| of L columns differs from 255 * sum |x - y| by at most 4 L. The sum of cells S
// differs from 4 L - sum |x - y| by at most 4 L * 2^-53, half an ulp twice per cell. Hence
//  - S >= T implies distance <= 255 (4 L - T) + 4 L + (less than 1): above that an alignment is surely under the cutoff;
//  - if one orientation's distance exceeds another's by more than 8 L, so by 8 L + 1 at least, its S is smaller by
//    1/255 - 8 L * 2^-53, far more than the 8 L * 2^-53 that two roundings of the mean can hide: it cannot win.
// Most alignments fall here, and of the others mostly one orientation is left to be summed.
//
// Best of four. Sums that differ by more than 8 L units have means more than 2 ulp apart, which rounding (0.5 ulp and
// 2^-11 of one, each) cannot make equal. Only closer ones are divided to see whether the later is really greater.
//
// Cost: about len(i) len(j) / 2 byte instructions a pair for the filter, and 2 to 3 cycles per column and orientation
// summed. Tested by pair_kernel_test.cpp against the plain form of bench/plain_form.h.

namespace varnolix {

namespace {

using kernel::Candidate;
using kernel::Facing;
using kernel::MotifView;

constexpr double unit = 0x1p-53;
constexpr double unitsPerCell = 0x1p53;
constexpr std::size_t cellsPerColumn = 4;
constexpr double levelsPerOne = 255.0;

// Extended precision must hold sums of 63 bits, as the 64-bit integers do.
constexpr bool hasExtendedPrecision = std::numeric_limits<long double>::digits >= 64;

// Vector loads run up to this many columns past the end of a motif.
constexpr std::size_t columnsPastEnd = 7;

constexpr std::size_t mostShifts = 2 * (mostKernelColumns - leastKernelColumns) + 1;
constexpr std::size_t candidateRoom = 2 * (mostShifts + 1);

/// In units, like the sum: the scale by a power of two commutes with rounding.
double meanInUnits(std::int64_t sum, std::size_t columns) {
    return static_cast<double>(static_cast<long double>(sum) / static_cast<long double>(cellsPerColumn * columns));
}

double meanScore(std::int64_t sum, std::size_t columns) {
    return meanInUnits(sum, columns) * unit;
}

std::int64_t mostUnits(std::size_t columns) {
    return static_cast<std::int64_t>(cellsPerColumn * columns) << 53;
}

bool lieWithinUnit(const Matrix& matrix) {
    return std::all_of(matrix.begin(), matrix.end(), [](const Column& column) {
        // Written so that a value that is not a number fails.
        return std::all_of(column.begin(), column.end(), [](double value) { return value >= 0.0 && value <= 1.0; });
    });
}

KernelLevels levelsOf(const Column& column) {
    KernelLevels result;
    std::transform(column.begin(), column.end(), result.levels.begin(),
                   [](double value) { return static_cast<std::uint8_t>(value * levelsPerOne + 0.5); });
    return result;
}

MotifView viewOf(const KernelMotifs& motifs, std::size_t motif) {
    return {motifs.columns(motif), motifs.levels(motif), motifs.length(motif)};
}

bool takesPart(const KernelMotifs& motifs, std::size_t motif) {
    return motifs.isExact(motif) && motifs.length(motif) >= leastKernelColumns;
}

/// Candidates of one left motif, summed and judged as soon as their room is full.
class Judge {
  public:
    Judge(const KernelMotifs& lefts, std::size_t i, const KernelMotifs& rights, const CutoffTable& cutoff,
          OuterMotif outer, const kernel::Stages& stages, std::vector<ScoredShift>& kept)
        : left_(viewOf(lefts, i)), rights_(rights), cutoff_(cutoff), outer_(outer), stages_(stages), kept_(kept) {}

    void take(std::size_t partner) {
        if (static_cast<std::size_t>(candidates_.data() + candidates_.size() - end_) <= mostShifts) {
            finish();
        }
        end_ = stages_.filterShifts(left_, viewOf(rights_, partner), static_cast<std::uint32_t>(partner), cutoff_,
                                    outer_, end_);
    }

    void finish() {
        const std::size_t count = listFacing();
        stages_.sumCells(facing_.data(), count, sums_.data());
        const std::int64_t* sums = sums_.data();
        for (const Candidate* candidate = candidates_.data(); candidate != end_; ++candidate) {
            sums = keepBest(*candidate, sums);
        }
        end_ = candidates_.data();
    }

  private:
    std::size_t listFacing() {
        Facing* facing = facing_.data();
        for (const Candidate* candidate = candidates_.data(); candidate != end_; ++candidate) {
            const MotifView right = viewOf(rights_, candidate->partner);
            const std::size_t leftStart = static_cast<std::size_t>(std::max(0, -candidate->shift));
            const std::size_t rightStart = static_cast<std::size_t>(std::max<int>(0, candidate->shift));
            for (unsigned bits = candidate->orientations; bits != 0; bits &= bits - 1) {
                const auto orientation = static_cast<Orientation>(std::countr_zero(bits));
                const bool first = orientation >= Orientation::firstReversed;
                const bool second = orientation == Orientation::secondReversed || orientation == Orientation::bothReversed;
                const bool leftReversed = outer_ == OuterMotif::left ? first : second;
                const bool rightReversed = outer_ == OuterMotif::left ? second : first;
                facing->left = left_.columns + leftStart + (leftReversed ? left_.length : 0);
                facing->right = right.columns + rightStart + (rightReversed ? right.length : 0);
                facing->columns = candidate->columns;
                ++facing;
            }
        }
        return static_cast<std::size_t>(facing - facing_.data());
    }

    /// A strict running maximum over the means, in the order of the orientations. Returns the sums of the next candidate.
    const std::int64_t* keepBest(const Candidate& candidate, const std::int64_t* sums) {
        const std::size_t columns = candidate.columns;
        const std::int64_t hidden = static_cast<std::int64_t>(2 * cellsPerColumn * columns);
        std::int64_t bestSum = -1 - hidden;
        int best = 0;
        for (unsigned bits = candidate.orientations; bits != 0; bits &= bits - 1) {
            const std::int64_t sum = *sums++;
            if (sum > bestSum &&
                (sum - bestSum > hidden || meanInUnits(sum, columns) > meanInUnits(bestSum, columns))) {
                bestSum = sum;
                best = std::countr_zero(bits);
            }
        }
        if (bestSum >= cutoff_.leastSum(columns)) {
            ScoredShift result{};
            result.score = meanScore(bestSum, columns);
            result.partner = candidate.partner;
            result.shift = candidate.shift;
            result.orientation = static_cast<Orientation>(best);
            result.walks = bothWalks;
            kept_.push_back(result);
        }
        return sums;
    }

    const MotifView left_;
    const KernelMotifs& rights_;
    const CutoffTable& cutoff_;
    const OuterMotif outer_;
    const kernel::Stages& stages_;
    std::vector<ScoredShift>& kept_;
    // Written before they are read, so they stay as they are found.
    std::array<Candidate, candidateRoom> candidates_;
    std::array<Facing, 4 * candidateRoom> facing_;
    std::array<std::int64_t, 4 * candidateRoom> sums_;
    Candidate* end_ = candidates_.data();
};

}  // namespace

KernelMotifs::KernelMotifs(std::span<const data> motifs) {
    std::size_t columns = columnsPastEnd;
    for (const data& motif : motifs) {
        columns += 2 * motif.matrix.size();
    }
    motifs_.reserve(motifs.size());
    columns_.reserve(columns);
    levels_.reserve(columns);
    for (const data& motif : motifs) {
        append(motif.matrix, motif.revCompMatrix);
    }
    padEnd();
}

KernelMotifs::KernelMotifs(const Matrix& matrix, const Matrix& revCompMatrix) {
    const std::size_t columns = 2 * matrix.size() + columnsPastEnd;
    columns_.reserve(columns);
    levels_.reserve(columns);
    append(matrix, revCompMatrix);
    padEnd();
}

void KernelMotifs::append(const Matrix& matrix, const Matrix& revCompMatrix) {
    const bool isExact = hasExtendedPrecision && matrix.size() <= mostKernelColumns &&
                         matrix.size() == revCompMatrix.size() && lieWithinUnit(matrix) && lieWithinUnit(revCompMatrix);
    motifs_.push_back({columns_.size(), matrix.size(), isExact});
    if (!isExact) {
        return;
    }
    for (const Matrix* strand : {&matrix, &revCompMatrix}) {
        for (const Column& column : *strand) {
            columns_.push_back({column});
            levels_.push_back(levelsOf(column));
        }
    }
}

void KernelMotifs::padEnd() {
    columns_.resize(columns_.size() + columnsPastEnd);
    levels_.resize(levels_.size() + columnsPastEnd);
}

CutoffTable::CutoffTable(double cutoff) {
    leastSums_[0] = 0;
    greatestDistances_[0] = -1;
    for (std::size_t columns = 1; columns <= mostKernelColumns; ++columns) {
        const std::int64_t most = mostUnits(columns);
        std::int64_t low = 0;
        std::int64_t high = most + 1;  // out of reach: nothing is kept
        while (low < high) {
            const std::int64_t middle = low + (high - low) / 2;
            if (meanScore(middle, columns) >= cutoff) {
                high = middle;
            } else {
                low = middle + 1;
            }
        }
        leastSums_[columns] = low;
        const double cells = static_cast<double>(cellsPerColumn * columns);
        // One more than the bound, for the rounding of the bound itself.
        const double distance = levelsPerOne * (cells - static_cast<double>(low) / unitsPerCell) + cells + 1.0;
        greatestDistances_[columns] = low > most ? -1 : static_cast<std::int32_t>(distance);
    }
}

KernelCode fastestKernelCode() {
    return kernel::hasAvx2() ? KernelCode::avx2 : KernelCode::portable;
}

void scoreShifts(const KernelMotifs& lefts, std::size_t i, const KernelMotifs& rights, std::size_t firstPartner,
                 std::size_t lastPartner, const CutoffTable& cutoff, OuterMotif outer, std::vector<ScoredShift>& kept,
                 KernelCode code) {
    if (!takesPart(lefts, i)) {
        return;
    }
    const kernel::Stages stages = code == KernelCode::avx2 ? kernel::avx2Stages() : kernel::portableStages();
    Judge judge(lefts, i, rights, cutoff, outer, stages, kept);
    for (std::size_t partner = firstPartner; partner < lastPartner; ++partner) {
        if (takesPart(rights, partner)) {
            judge.take(partner);
        }
    }
    judge.finish();
}

bool scoreShifts(const Matrix& left, const Matrix& leftRevComp, const Matrix& right, const Matrix& rightRevComp,
                 const CutoffTable& cutoff, std::vector<ScoredShift>& kept) {
    const KernelMotifs lefts(left, leftRevComp);
    const KernelMotifs rights(right, rightRevComp);
    if (!lefts.isExact(0) || !rights.isExact(0)) {
        return false;
    }
    scoreShifts(lefts, 0, rights, 0, 1, cutoff, OuterMotif::left, kept);
    return true;
}

}  // namespace varnolix
