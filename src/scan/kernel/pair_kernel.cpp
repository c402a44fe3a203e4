#include "scan/kernel/pair_kernel.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "scan/kernel/pair_kernel_stages.h"

// All alignments of two motifs, forward or backward, first or second region, are the diagonals of one table of column
// pairs, and each is scored once.
//
// Exact sums in integers. For x, y in [0, 1] a cell c = RN(1 - RN|x - y|) is a multiple of 2^-53: with d = RN|x - y|,
// if d <= 1/2 then c lies in [1/2, 1], where doubles are that far apart; otherwise d is itself a multiple of 2^-53 and
// 1 - d is exact. At most 4 * 255 cells of at most 2^53 units stay below 2^63, so 64-bit integers hold their sum in any
// order, and an extended accumulator holds it too: both are the same number. Dividing it in extended precision and
// rounding to double gives the mean of the plain form; as this is monotone, the cutoff becomes a least sum per length,
// and only kept alignments are divided.
//
// Filter in bytes. Each value is rounded to X = round(255 x), so |X - 255 x| <= 1/2 (and less than 2^-44 more by the
// arithmetic), and the distance sum |X - Y| of L columns differs from 255 * sum |x - y| by at most 4 L. The sum of
// cells S differs from 4 L - sum |x - y| by at most 4 L * 2^-53, half an ulp twice per cell. Hence
//  - S >= T implies distance <= 255 (4 L - T) + 4 L + (less than 1): above that an alignment is surely under the
//  cutoff;
//  - if one orientation's distance exceeds another's by more than 8 L, so by 8 L + 1 at least, its S is smaller by
//    1/255 - 8 L * 2^-53, far more than the 8 L * 2^-53 that two roundings of the mean can hide: it cannot win.
// Most alignments fall here, and of the others mostly one orientation is left to be summed.
//
// Best of four. Sums that differ by more than 8 L units have means more than 2 ulp apart, which rounding (0.5 ulp and
// 2^-11 of one, each) cannot make equal. Only closer ones are divided to see whether the later is really greater.
//
// Lanes. The filter takes eight partners of equal length at once, one per lane, so that nothing has to be gathered and
// branches depend on lengths alone. The results come back into the order of the partners by counting.
//
// Cost: the filter takes four byte distances per two facing columns and eight partners, the sums about 3 cycles per
// column of each orientation that may be the best. At usual cutoffs both, and the handling of what is kept, weigh about
// the same. Tested by pair_kernel_test.cpp against the plain form of bench/plain_form.h.

namespace varnolix {

struct KernelScratch::Rooms {
    kernel::Candidates candidates;
    // Written before they are read, an element for each candidate.
    std::array<kernel::Facing, kernel::Candidates::room> facing;
    std::array<std::int64_t, kernel::Candidates::room> sums;
    std::array<Orientation, kernel::Candidates::room> orientations;
    std::array<std::uint16_t, kernel::Candidates::room> tied;
    // The same for those that are tied.
    std::array<std::int64_t, kernel::Candidates::room> challengingSums;
    std::array<Orientation, kernel::Candidates::room> challengers;
    // The results of a block of partners, and where those of each partner go.
    std::vector<ScoredShift> scored;
    std::array<std::size_t, KernelMotifs::blockSize + 1> starts;
};
static_assert(kernel::Candidates::room <= std::numeric_limits<std::uint16_t>::max());

KernelScratch::KernelScratch() = default;
KernelScratch::~KernelScratch() = default;
KernelScratch::KernelScratch(KernelScratch&&) noexcept = default;
KernelScratch& KernelScratch::operator=(KernelScratch&&) noexcept = default;

KernelScratch::Rooms& KernelScratch::rooms() {
    if (!rooms_) rooms_ = std::make_unique_for_overwrite<Rooms>();
    return *rooms_;
}

namespace {

using kernel::bitsPerRival;
using kernel::Candidates;
using kernel::columnsPastEnd;
using kernel::LeftMotif;
using kernel::oneRival;
using kernel::Place;
using kernel::Rivals;

constexpr double unit = 0x1p-53;
constexpr int cellsPerColumn = kernel::cellsPerColumn;
constexpr double levelsPerOne = kernel::levelsPerOne;

// Extended precision must hold sums of 63 bits, as the 64-bit integers do.
constexpr bool hasExtendedPrecision = std::numeric_limits<long double>::digits >= 64;

/// In units, like the sum: the scale by a power of two commutes with rounding.
double meanInUnits(std::int64_t sum, int columns) {
    return static_cast<double>(static_cast<long double>(sum) / static_cast<long double>(cellsPerColumn * columns));
}

double meanScore(std::int64_t sum, int columns) {
    return meanInUnits(sum, columns) * unit;
}

/// Whether the mean of the first sum is greater than that of the second.
bool isBetter(std::int64_t sum, std::int64_t best, int columns) {
    const std::int64_t hidden = std::int64_t{2} * cellsPerColumn * columns;
    const std::int64_t lead = sum - best;
    return lead > hidden || (lead > 0 && meanInUnits(sum, columns) > meanInUnits(best, columns));
}

// The longest motif's sum, and what it is divided by.
static_assert(std::uint64_t{cellsPerColumn * mostKernelColumns} << 53U <=
              static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()));

std::int64_t mostUnits(int columns) {
    return static_cast<std::int64_t>(cellsPerColumn * columns) << 53;
}

bool lieWithinUnit(const Matrix& matrix) {
    return std::all_of(matrix.begin(), matrix.end(), [](const Column& column) {
        // Written so that a value that is not a number fails.
        return std::all_of(column.begin(), column.end(), [](double value) { return value >= 0.0 && value <= 1.0; });
    });
}

bool canBeExact(const std::array<const Matrix*, 2>& strands) {
    return hasExtendedPrecision && strands[0]->size() <= mostKernelColumns &&
           strands[0]->size() == strands[1]->size() && lieWithinUnit(*strands[0]) && lieWithinUnit(*strands[1]);
}

KernelLevels levelsOf(const Column& column) {
    KernelLevels result;
    std::transform(column.begin(), column.end(), result.levels.begin(),
                   [](double value) { return static_cast<std::uint8_t>(std::lround(value * levelsPerOne)); });
    return result;
}

kernel::Stages stagesOf(KernelCode code) {
    switch (code) {
        case KernelCode::avx512:
            return kernel::avx512Stages();
        case KernelCode::avx2:
            return kernel::avx2Stages();
        default:
            return kernel::portableStages();
    }
}

bool takesPart(const KernelMotifs& motifs, std::size_t motif) {
    return motifs.isExact(motif) && motifs.length(motif) >= leastKernelColumns;
}

/// One left motif against partners.
class Judge {
  public:
    Judge(const KernelMotifs& lefts, std::size_t i, const KernelMotifs& rights, const CutoffTable& cutoff,
          OuterMotif outer, const kernel::Stages& stages, std::vector<ScoredShift>& kept, KernelScratch::Rooms& rooms)
        : left_{lefts.columns(i), lefts.levels(i), static_cast<int>(lefts.length(i))},
          rights_(rights),
          cutoff_(cutoff),
          outer_(outer),
          stages_(stages),
          kept_(kept),
          rooms_(rooms) {}

    /// Appends the results of the partners of a block, in order, as far as they lie within first .. last - 1.
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
        if (rooms_.candidates.count > kernel::candidateBatch) {
            judgeAll();
        }
        if (std::min(left_.length, static_cast<int>(partners.group.length)) <= kernel::mostFilteredColumns) {
            stages_.filterShifts(left_, partners, cutoff_, rooms_.candidates);
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
            const int columns = kernel::overlapAt(shift, left_.length, rightLength).columns;
            rooms_.candidates.rivals[rooms_.candidates.count] = kernel::allRivals;
            rooms_.candidates.places[rooms_.candidates.count] = {partner, static_cast<std::int16_t>(shift),
                                                                 static_cast<std::uint16_t>(columns)};
            ++rooms_.candidates.count;
        }
    }

    /// In passes of few steps each, so that the processor has several candidates under way.
    void judgeAll() {
        std::size_t ties = 0;
        for (std::size_t n = 0; n < rooms_.candidates.count; ++n) {
            rooms_.candidates.rivals[n] = outerView(rooms_.candidates.rivals[n]);
            rooms_.orientations[n] = takeRival(n);
            rooms_.facing[n] = facingOf(rooms_.orientations[n], rooms_.candidates.places[n]);
            rooms_.tied[ties] = static_cast<std::uint16_t>(n);
            ties += rooms_.candidates.rivals[n] != 0 ? 1U : 0U;
        }
        stages_.sumCells(rooms_.facing.data(), rooms_.candidates.count, rooms_.sums.data());
        while (ties != 0) {
            ties = settleNextRivals(ties);
        }
        appendKept();
        rooms_.candidates.count = 0;
    }

    /// Lets the next rival of each tied candidate challenge the best so far, as a strict running maximum over the means
    /// does. Returns the number of candidates that are still tied.
    std::size_t settleNextRivals(std::size_t ties) {
        for (std::size_t tie = 0; tie < ties; ++tie) {
            rooms_.challengers[tie] = takeRival(rooms_.tied[tie]);
            rooms_.facing[tie] = facingOf(rooms_.challengers[tie], rooms_.candidates.places[rooms_.tied[tie]]);
        }
        stages_.sumCells(rooms_.facing.data(), ties, rooms_.challengingSums.data());
        std::size_t left = 0;
        for (std::size_t tie = 0; tie < ties; ++tie) {
            const std::uint16_t n = rooms_.tied[tie];
            if (isBetter(rooms_.challengingSums[tie], rooms_.sums[n], rooms_.candidates.places[n].columns)) {
                rooms_.sums[n] = rooms_.challengingSums[tie];
                rooms_.orientations[n] = rooms_.challengers[tie];
            }
            rooms_.tied[left] = n;
            left += rooms_.candidates.rivals[n] != 0 ? 1U : 0U;
        }
        return left;
    }

    void appendKept() {
        const std::size_t before = rooms_.scored.size();
        rooms_.scored.resize(before + rooms_.candidates.count);
        ScoredShift* result = rooms_.scored.data() + before;
        for (std::size_t n = 0; n < rooms_.candidates.count; ++n) {
            const Place& place = rooms_.candidates.places[n];
            result->score = meanScore(rooms_.sums[n], place.columns);
            result->shift = place.shift;
            result->partner = place.partner & partnerMask;
            result->orientation = rooms_.orientations[n];
            result->walks = bothWalks;
            // Written always and kept by moving on: hardly any branch could be foretold here.
            result += rooms_.sums[n] >= cutoff_.leastSum(place.columns) ? 1 : 0;
        }
        rooms_.scored.resize(static_cast<std::size_t>(result - rooms_.scored.data()));
    }

    /// Puts the rivals into the order of the orientations.
    Rivals outerView(Rivals rivals) const {
        if (outer_ == OuterMotif::left) {
            return rivals;
        }
        const Rivals second = rivals >> bitsPerRival & oneRival;
        const Rivals third = rivals >> 2 * bitsPerRival & oneRival;
        return (rivals & ~(oneRival << bitsPerRival | oneRival << 2 * bitsPerRival)) | third << bitsPerRival |
               second << 2 * bitsPerRival;
    }

    /// Takes the first orientation out of the rivals of candidate n.
    Orientation takeRival(std::size_t n) {
        const int orientation = std::countr_zero(rooms_.candidates.rivals[n]) / bitsPerRival;
        rooms_.candidates.rivals[n] &= ~(oneRival << orientation * bitsPerRival);
        return static_cast<Orientation>(orientation);
    }

    kernel::Facing facingOf(Orientation orientation, const Place& place) const {
        const int first = static_cast<int>(orientation) >> 1;
        const int second = static_cast<int>(orientation) & 1;
        const std::ptrdiff_t leftReversed = outer_ == OuterMotif::left ? first : second;
        const std::ptrdiff_t rightReversed = outer_ == OuterMotif::left ? second : first;
        const int rightLength = static_cast<int>(rights_.length(place.partner));
        const kernel::Overlap overlap = kernel::overlapAt(place.shift, left_.length, rightLength);
        return {left_.columns + leftReversed * left_.length + overlap.leftStart,
                rights_.columns(place.partner) + rightReversed * rightLength + overlap.rightStart, overlap.columns};
    }

    /// Groups hold partners of equal length; here they come back into their order.
    void appendByPartner(std::size_t firstOfBlock) {
        std::array<std::size_t, KernelMotifs::blockSize + 1>& starts = rooms_.starts;
        starts.fill(0);
        for (const ScoredShift& shift : rooms_.scored) {
            ++starts[shift.partner - firstOfBlock + 1];
        }
        std::partial_sum(starts.begin(), starts.end(), starts.begin());
        const std::size_t end = kept_.size();
        kept_.resize(end + rooms_.scored.size());
        for (const ScoredShift& shift : rooms_.scored) {
            kept_[end + starts[shift.partner - firstOfBlock]++] = shift;
        }
        rooms_.scored.clear();
    }

    const LeftMotif left_;
    const KernelMotifs& rights_;
    const CutoffTable& cutoff_;
    const OuterMotif outer_;
    const kernel::Stages stages_;
    std::vector<ScoredShift>& kept_;
    KernelScratch::Rooms& rooms_;
};

}  // namespace

KernelMotifs::KernelMotifs(std::span<const data> motifs) {
    std::vector<Strands> strands;
    strands.reserve(motifs.size());
    for (const data& motif : motifs) {
        strands.push_back({&motif.matrix, &motif.revCompMatrix});
    }
    build(strands);
}

KernelMotifs::KernelMotifs(const Matrix& matrix, const Matrix& revCompMatrix) {
    const Strands strands = {&matrix, &revCompMatrix};
    build({&strands, 1});
}

void KernelMotifs::build(std::span<const Strands> motifs) {
    std::size_t columns = columnsPastEnd;
    motifs_.reserve(motifs.size());
    for (const Strands& strands : motifs) {
        motifs_.push_back({0, static_cast<std::uint32_t>(strands[0]->size()), canBeExact(strands)});
        // Room for just these, so that a checker of addresses sees what is read behind them.
        if (takesPart(*this, motifs_.size() - 1)) columns += 2 * strands[0]->size();
    }
    columns_.reserve(columns);
    levels_.reserve(columns);
    std::vector<std::uint32_t> block;
    for (std::size_t first = 0; first < size(); first += blockSize) {
        block.clear();
        for (std::size_t motif = first; motif < std::min(size(), first + blockSize); ++motif) {
            if (takesPart(*this, motif)) {
                block.push_back(static_cast<std::uint32_t>(motif));
            }
        }
        std::stable_sort(block.begin(), block.end(),
                         [this](std::uint32_t a, std::uint32_t b) { return length(a) < length(b); });
        // Columns lie in the order in which groups are scored.
        for (const std::uint32_t motif : block) {
            appendColumns(motif, motifs[motif]);
        }
        appendGroups(block);
        blockEnds_.push_back(groups_.size());
    }
    columns_.resize(columns_.size() + columnsPastEnd);
    levels_.resize(levels_.size() + columnsPastEnd);
}

void KernelMotifs::appendColumns(std::size_t motif, const Strands& strands) {
    motifs_[motif].firstColumn = columns_.size();
    for (const Matrix* strand : strands) {
        for (const Column& column : *strand) {
            columns_.push_back({column});
            levels_.push_back(levelsOf(column));
        }
    }
}

void KernelMotifs::appendGroups(std::span<const std::uint32_t> block) {
    while (!block.empty()) {
        std::size_t lanes = 1;
        while (lanes < std::min(kernelLanes, block.size()) && length(block[lanes]) == length(block[0])) {
            ++lanes;
        }
        KernelGroup group{{}, lanes, length(block[0]), pairs_.size()};
        for (std::size_t lane = 0; lane < kernelLanes; ++lane) {
            group.motifs[lane] = block[std::min(lane, lanes - 1)];
        }
        groups_.push_back(group);
        appendPairs(group);
        block = block.subspan(lanes);
    }
}

void KernelMotifs::appendPairs(const KernelGroup& group) {
    for (std::size_t k = 0; k < group.length; ++k) {
        for (const std::size_t strandStart : {std::size_t{0}, group.length}) {
            KernelLevelPairs pairs{};
            for (std::size_t lane = 0; lane < kernelLanes; ++lane) {
                const KernelLevels* column = levels(group.motifs[lane]) + strandStart + k;
                pairs.lanes[lane][0] = column[0];
                if (k + 1 < group.length) {
                    pairs.lanes[lane][1] = column[1];
                }
            }
            pairs_.push_back(pairs);
        }
    }
}

std::span<const KernelGroup> KernelMotifs::groups(std::size_t block) const {
    const std::size_t first = block == 0 ? 0 : blockEnds_[block - 1];
    return std::span(groups_).subspan(first, blockEnds_[block] - first);
}

CutoffTable::CutoffTable(double cutoff) {
    leastSums_[0] = 0;
    greatestDistances_[0] = -1;
    for (std::size_t length = 1; length <= mostKernelColumns; ++length) {
        const int columns = static_cast<int>(length);
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
        leastSums_[length] = low;
        const double cells = cellsPerColumn * columns;
        // One more than the bound, for the rounding of the bound itself.
        const double distance = levelsPerOne * (cells - static_cast<double>(low) * unit) + cells + 1.0;
        greatestDistances_[length] = low > most ? -1 : static_cast<std::int32_t>(std::min(distance, 65535.0));
    }
}

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
    if (firstPartner >= lastPartner || !takesPart(lefts, i)) {
        return;
    }
    Judge judge(lefts, i, rights, cutoff, outer, stagesOf(code), kept, scratch.rooms());
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
