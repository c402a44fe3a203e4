#include "scan/kernel/pair_kernel.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "scan/kernel/kernel_code.h"

// All alignments of two motifs (forward or backward, first or second region) are the diagonals of one table of column
// pairs. Each diagonal is scored once, in four steps.
//
// 1. Filter in bytes (kernel_code). Each value x is rounded to X = round(255 x), so |X - 255 x| <= 1/2, plus less than
//    2^-44 for the arithmetic. So for L columns the distance, the sum of |X - Y|, differs from 255 times the sum of
//    |x - y| by at most 4 L. The sum of cells S differs from 4 L minus the sum of |x - y| by at most 4 L * 2^-53, half
//    an ulp twice per cell. It follows:
//     - If S >= T, the distance is at most 255 (4 L - T) + 4 L plus less than 1. An alignment with a greater distance
//       is certainly below the cutoff.
//     - If the distance of one orientation exceeds that of another by more than 8 L, so by at least 8 L + 1, its S is
//       smaller by at least 1/255 - 8 L * 2^-53. This is far more than 8 L * 2^-53, the most that rounding two means
//       can hide, so the orientation cannot win.
//    Most alignments end here, and most of the others have only one orientation left to be summed.
// 2. Exact sums of what is left, as 64-bit integers (exact_sums.h).
// 3. Best of four. If two sums differ by more than 8 L units, their means are more than 2 ulp apart. Rounding, which
//    moves each mean by 0.5 ulp and 2^-11 of one, cannot make them equal. Only closer sums are divided, to see whether
//    the later one is really greater.
// 4. The filter takes eight partners of equal length at once, one per lane, so that its branches depend on lengths
//    alone. Therefore results come out of order, and a counting sort puts them back into the order of the partners.
//
// Cost: the filter takes four byte distances for every two facing columns and eight partners; each orientation that may
// be the best takes about 3 cycles per column for its sum. At usual cutoffs, the filter, the sums, and the handling of
// what is kept cost about the same. Tested by pair_kernel_test.cpp against the plain form.

namespace varnolix {

struct KernelScratch::Buffers {
    kernel::Candidates candidates;
    // One element for each candidate; written before it is read.
    std::array<kernel::Facing, kernel::Candidates::capacity> facing;
    std::array<std::int64_t, kernel::Candidates::capacity> sums;
    std::array<Orientation, kernel::Candidates::capacity> orientations;
    std::array<std::uint16_t, kernel::Candidates::capacity> contested;
    // The same for the contested candidates: those that more than one orientation may win.
    std::array<std::int64_t, kernel::Candidates::capacity> challengingSums;
    std::array<Orientation, kernel::Candidates::capacity> challengers;
    // The results of a block of partners, and where the results of each partner go.
    std::vector<ScoredShift> scored;
    std::array<std::size_t, KernelMotifs::blockSize + 1> starts;
};
static_assert(kernel::Candidates::capacity <= std::numeric_limits<std::uint16_t>::max());

KernelScratch::KernelScratch() = default;
KernelScratch::~KernelScratch() = default;
KernelScratch::KernelScratch(KernelScratch&& other) noexcept = default;
KernelScratch& KernelScratch::operator=(KernelScratch&& other) noexcept = default;

KernelScratch::Buffers& KernelScratch::buffers() {
    if (!buffers_) buffers_ = std::make_unique_for_overwrite<Buffers>();
    return *buffers_;
}

namespace {

using kernel::bitsPerRival;
using kernel::isBetter;
using kernel::LeftMotif;
using kernel::meanScore;
using kernel::oneRival;
using kernel::Place;
using kernel::Rivals;

kernel::CodeSteps stepsOf(KernelCode code) {
    switch (code) {
        case KernelCode::avx512:
            return kernel::avx512Steps();
        case KernelCode::avx2:
            return kernel::avx2Steps();
        default:
            return kernel::portableSteps();
    }
}

/// Scores one left motif against its partners.
class Judge {
  public:
    Judge(const KernelMotifs& lefts, std::size_t i, const KernelMotifs& rights, const CutoffTable& cutoff,
          OuterMotif outer, const kernel::CodeSteps& steps, std::vector<ScoredShift>& kept,
          KernelScratch::Buffers& buffers)
        : left_{lefts.columns(i), lefts.levels(i), static_cast<int>(lefts.length(i))},
          rights_(rights),
          cutoff_(cutoff),
          outer_(outer),
          steps_(steps),
          kept_(kept),
          buffers_(buffers) {}

    /// Appends, in order, the results of those partners of a block that are within first .. last - 1.
    void takeBlock(std::size_t block, std::size_t first, std::size_t last) {
        const std::span<const KernelGroup> groups = rights_.groups(block);
        if (groups.empty()) return;
        for (const KernelGroup& group : groups) {
            unsigned lanes = 0;
            for (std::size_t lane = 0; lane < group.lanes; ++lane) {
                const bool isWanted = group.motifs[lane] >= first && group.motifs[lane] < last;
                lanes |= static_cast<unsigned>(isWanted) << lane;
            }
            if (lanes != 0) {
                takeGroup({rights_, group, lanes});
            }
        }
        judgeAll();
        appendByPartner(block * KernelMotifs::blockSize);
    }

  private:
    void takeGroup(const kernel::Partners& partners) {
        if (buffers_.candidates.count > kernel::candidateBatch) {
            judgeAll();
        }
        if (std::min(left_.length, static_cast<int>(partners.group.length)) <= kernel::mostFilteredColumns) {
            steps_.filterShifts(left_, partners, cutoff_, buffers_.candidates);
            return;
        }
        for (std::size_t lane = 0; lane < kernelLanes; ++lane) {
            if ((partners.lanes >> lane & 1U) != 0) {
                takeAllShifts(partners.group.motifs[lane]);
            }
        }
    }

    void takeAllShifts(std::uint32_t partner) {
        const int least = static_cast<int>(leastKernelColumns);
        const int rightLength = static_cast<int>(rights_.length(partner));
        for (int shift = least - left_.length; shift <= rightLength - least; ++shift) {
            const int columns = kernel::facingColumns(shift, left_.length, rightLength).columns;
            buffers_.candidates.rivals[buffers_.candidates.count] = kernel::allRivals;
            buffers_.candidates.places[buffers_.candidates.count] = {partner, static_cast<std::int16_t>(shift),
                                                                     static_cast<std::uint16_t>(columns)};
            ++buffers_.candidates.count;
        }
    }

    /// Works in short passes, so that the processor can overlap the work on several candidates.
    void judgeAll() {
        std::size_t contests = 0;
        for (std::size_t n = 0; n < buffers_.candidates.count; ++n) {
            buffers_.candidates.rivals[n] = outerView(buffers_.candidates.rivals[n]);
            buffers_.orientations[n] = takeRival(n);
            buffers_.facing[n] = facingOf(buffers_.orientations[n], buffers_.candidates.places[n]);
            buffers_.contested[contests] = static_cast<std::uint16_t>(n);
            contests += buffers_.candidates.rivals[n] != 0 ? 1U : 0U;
        }
        steps_.sumCells(buffers_.facing.data(), buffers_.candidates.count, buffers_.sums.data());
        while (contests != 0) {
            contests = judgeNextRivals(contests);
        }
        appendKept();
        buffers_.candidates.count = 0;
    }

    /// Compares the next rival of each contested candidate with the best one so far. An equal mean does not win, so the
    /// earlier orientation stays. Returns the number of candidates that are still contested.
    std::size_t judgeNextRivals(std::size_t contests) {
        for (std::size_t contest = 0; contest < contests; ++contest) {
            buffers_.challengers[contest] = takeRival(buffers_.contested[contest]);
            buffers_.facing[contest] =
                facingOf(buffers_.challengers[contest], buffers_.candidates.places[buffers_.contested[contest]]);
        }
        steps_.sumCells(buffers_.facing.data(), contests, buffers_.challengingSums.data());
        std::size_t left = 0;
        for (std::size_t contest = 0; contest < contests; ++contest) {
            const std::uint16_t n = buffers_.contested[contest];
            if (isBetter(buffers_.challengingSums[contest], buffers_.sums[n], buffers_.candidates.places[n].columns)) {
                buffers_.sums[n] = buffers_.challengingSums[contest];
                buffers_.orientations[n] = buffers_.challengers[contest];
            }
            buffers_.contested[left] = n;
            left += buffers_.candidates.rivals[n] != 0 ? 1U : 0U;
        }
        return left;
    }

    void appendKept() {
        const std::size_t before = buffers_.scored.size();
        buffers_.scored.resize(before + buffers_.candidates.count);
        ScoredShift* result = buffers_.scored.data() + before;
        for (std::size_t n = 0; n < buffers_.candidates.count; ++n) {
            const Place& place = buffers_.candidates.places[n];
            result->score = meanScore(buffers_.sums[n], place.columns);
            result->shift = place.shift;
            result->partner = place.partner & partnerMask;
            result->orientation = buffers_.orientations[n];
            result->walks = bothWalks;
            // Store unconditionally, advance only if kept: a branch would mispredict.
            result += buffers_.sums[n] >= cutoff_.leastSum(place.columns) ? 1 : 0;
        }
        buffers_.scored.resize(static_cast<std::size_t>(result - buffers_.scored.data()));
    }

    /// The rivals in the order of Orientation, which names the outer motif first.
    Rivals outerView(Rivals rivals) const {
        if (outer_ == OuterMotif::left) {
            return rivals;
        }
        const Rivals second = rivals >> bitsPerRival & oneRival;
        const Rivals third = rivals >> 2 * bitsPerRival & oneRival;
        return (rivals & ~(oneRival << bitsPerRival | oneRival << 2 * bitsPerRival)) | third << bitsPerRival |
               second << 2 * bitsPerRival;
    }

    /// Removes the first orientation from the rivals of candidate n and returns it.
    Orientation takeRival(std::size_t n) {
        const int orientation = std::countr_zero(buffers_.candidates.rivals[n]) / bitsPerRival;
        buffers_.candidates.rivals[n] &= ~(oneRival << orientation * bitsPerRival);
        return static_cast<Orientation>(orientation);
    }

    kernel::Facing facingOf(Orientation orientation, const Place& place) const {
        const int first = static_cast<int>(orientation) >> 1;
        const int second = static_cast<int>(orientation) & 1;
        const std::ptrdiff_t leftReversed = outer_ == OuterMotif::left ? first : second;
        const std::ptrdiff_t rightReversed = outer_ == OuterMotif::left ? second : first;
        const int rightLength = static_cast<int>(rights_.length(place.partner));
        const kernel::FacingColumns facing = kernel::facingColumns(place.shift, left_.length, rightLength);
        return {left_.columns + leftReversed * left_.length + facing.leftStart,
                rights_.columns(place.partner) + rightReversed * rightLength + facing.rightStart, facing.columns};
    }

    /// Appends the results in the order of the partners. Groups hold partners of equal length, so they come out of
    /// order.
    void appendByPartner(std::size_t firstOfBlock) {
        std::array<std::size_t, KernelMotifs::blockSize + 1>& starts = buffers_.starts;
        starts.fill(0);
        for (const ScoredShift& shift : buffers_.scored) {
            ++starts[shift.partner - firstOfBlock + 1];
        }
        std::partial_sum(starts.begin(), starts.end(), starts.begin());
        const std::size_t end = kept_.size();
        kept_.resize(end + buffers_.scored.size());
        for (const ScoredShift& shift : buffers_.scored) {
            kept_[end + starts[shift.partner - firstOfBlock]++] = shift;
        }
        buffers_.scored.clear();
    }

    const LeftMotif left_;
    const KernelMotifs& rights_;
    const CutoffTable& cutoff_;
    const OuterMotif outer_;
    const kernel::CodeSteps steps_;
    std::vector<ScoredShift>& kept_;
    KernelScratch::Buffers& buffers_;
};

}  // namespace

std::vector<KernelCode> kernelCodes() {
    std::vector<KernelCode> codes = {KernelCode::portable};
    if (kernel::hasAvx2()) {
        codes.push_back(KernelCode::avx2);
    }
    if (kernel::hasAvx512()) {
        codes.push_back(KernelCode::avx512);
    }
    return codes;
}

KernelCode fastestKernelCode() {
    static const KernelCode fastest = kernelCodes().back();
    return fastest;
}

void scoreShifts(const KernelMotifs& lefts, std::size_t i, const KernelMotifs& rights, std::size_t firstPartner,
                 std::size_t lastPartner, const CutoffTable& cutoff, OuterMotif outer, std::vector<ScoredShift>& kept,
                 KernelScratch& scratch, KernelCode code) {
    if (firstPartner >= lastPartner || !lefts.takesPart(i)) {
        return;
    }
    Judge judge(lefts, i, rights, cutoff, outer, stepsOf(code), kept, scratch.buffers());
    for (std::size_t block = firstPartner / KernelMotifs::blockSize; block * KernelMotifs::blockSize < lastPartner;
         ++block) {
        judge.takeBlock(block, firstPartner, lastPartner);
    }
}

bool scoreShifts(const Matrix& left, const Matrix& leftRevComp, const Matrix& right, const Matrix& rightRevComp,
                 const CutoffTable& cutoff, std::vector<ScoredShift>& kept, KernelScratch& scratch) {
    const KernelMotifs lefts(left, leftRevComp);
    const KernelMotifs rights(right, rightRevComp);
    if (!lefts.isExact(0) || !rights.isExact(0)) {
        return false;
    }
    scoreShifts(lefts, 0, rights, 0, 1, cutoff, OuterMotif::left, kept, scratch);
    return true;
}

}  // namespace varnolix
