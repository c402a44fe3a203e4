#include "scan/pair_kernel_stages.h"

// The stages for processors with AVX2, found out at run time, so the rest of the program needs no special build.

#if defined(__x86_64__) && defined(__GNUC__)

#include <immintrin.h>

#include <algorithm>

#define VARNOLIX_AVX2 __attribute__((target("avx2")))

namespace varnolix::kernel {

namespace {

constexpr int columnsPerLevelLoad = 8;
constexpr std::size_t columnsPerSumStep = 4;

// Eight columns of levels: all bits of the first n are set if loaded from element 8 - n.
alignas(32) constexpr std::array<std::int32_t, 16> levelMask = {-1, -1, -1, -1, -1, -1, -1, -1};

VARNOLIX_AVX2 inline __m256i load(const void* from) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

/// The distances of the four orientations of one alignment, in units of levels.
class Distances {
  public:
    VARNOLIX_AVX2 Distances(const KernelLevels* left, std::size_t leftLength, const KernelLevels* right,
                            std::size_t rightLength, int columns)
        : original_(_mm256_setzero_si256()),
          rightReversed_(original_),
          leftReversed_(original_),
          bothReversed_(original_) {
        for (; columns > columnsPerLevelLoad; columns -= columnsPerLevelLoad) {
            add(load(left), load(left + leftLength), load(right), load(right + rightLength));
            left += columnsPerLevelLoad;
            right += columnsPerLevelLoad;
        }
        const __m256i mask = load(levelMask.data() + columnsPerLevelLoad - columns);
        add(_mm256_and_si256(load(left), mask), _mm256_and_si256(load(left + leftLength), mask),
            _mm256_and_si256(load(right), mask), _mm256_and_si256(load(right + rightLength), mask));
    }

    /// Four words of 16 bits in the order of the orientations, twice.
    template <OuterMotif outer>
    VARNOLIX_AVX2 __m128i words() const {
        const bool leftIsOuter = outer == OuterMotif::left;
        const __m256i second = leftIsOuter ? rightReversed_ : leftReversed_;
        const __m256i third = leftIsOuter ? leftReversed_ : rightReversed_;
        const __m256i low = _mm256_or_si256(original_, _mm256_slli_epi64(second, 16));
        const __m256i high = _mm256_or_si256(_mm256_slli_epi64(third, 32), _mm256_slli_epi64(bothReversed_, 48));
        const __m256i lanes = _mm256_or_si256(low, high);
        const __m128i halves = _mm_add_epi64(_mm256_castsi256_si128(lanes), _mm256_extracti128_si256(lanes, 1));
        return _mm_add_epi64(halves, _mm_shuffle_epi32(halves, _MM_SHUFFLE(1, 0, 3, 2)));
    }

  private:
    VARNOLIX_AVX2 void add(__m256i left, __m256i leftReversed, __m256i right, __m256i rightReversed) {
        original_ = _mm256_add_epi64(original_, _mm256_sad_epu8(left, right));
        rightReversed_ = _mm256_add_epi64(rightReversed_, _mm256_sad_epu8(left, rightReversed));
        leftReversed_ = _mm256_add_epi64(leftReversed_, _mm256_sad_epu8(leftReversed, right));
        bothReversed_ = _mm256_add_epi64(bothReversed_, _mm256_sad_epu8(leftReversed, rightReversed));
    }

    __m256i original_;
    __m256i rightReversed_;
    __m256i leftReversed_;
    __m256i bothReversed_;
};

template <OuterMotif outer>
VARNOLIX_AVX2 Candidate* filterShifts(const MotifView& left, const MotifView& right, std::uint32_t partner,
                                      const CutoffTable& cutoff, Candidate* candidates) {
    const int leftLength = static_cast<int>(left.length);
    const int rightLength = static_cast<int>(right.length);
    const int least = static_cast<int>(leastKernelColumns);
    for (int shift = least - leftLength; shift <= rightLength - least; ++shift) {
        const int leftStart = std::max(0, -shift);
        const int rightStart = std::max(0, shift);
        const int columns = std::min(leftLength - leftStart, rightLength - rightStart);
        *candidates = {partner, static_cast<std::int16_t>(shift), static_cast<std::uint8_t>(columns), allOrientations};
        if (columns > mostFilteredColumns) {
            ++candidates;
            continue;
        }
        const Distances distances(left.levels + leftStart, left.length, right.levels + rightStart, right.length,
                                  columns);
        const __m128i words = distances.words<outer>();
        const __m128i smallest = _mm_minpos_epu16(words);
        const __m128i rivals = _mm_set1_epi16(static_cast<std::int16_t>(rivalDistancePerColumn * columns));
        const __m128i limit = _mm_adds_epu16(_mm_broadcastw_epi16(smallest), rivals);
        const __m128i possible = _mm_cmpeq_epi16(_mm_subs_epu16(words, limit), _mm_setzero_si128());
        const int orientations = _mm_movemask_epi8(_mm_packs_epi16(possible, possible)) & allOrientations;
        candidates->orientations = static_cast<std::uint8_t>(orientations);
        // Written always and kept by moving on, as whether it is kept cannot be foretold.
        candidates += _mm_extract_epi16(smallest, 0) <= cutoff.greatestDistance(static_cast<std::size_t>(columns));
    }
    return candidates;
}

VARNOLIX_AVX2 Candidate* filterShiftsOf(const MotifView& left, const MotifView& right, std::uint32_t partner,
                                        const CutoffTable& cutoff, OuterMotif outer, Candidate* candidates) {
    return outer == OuterMotif::left ? filterShifts<OuterMotif::left>(left, right, partner, cutoff, candidates)
                                     : filterShifts<OuterMotif::right>(left, right, partner, cutoff, candidates);
}

constexpr std::int64_t noSign = 0x7FFFFFFFFFFFFFFF;

// Clears the signs of the first n columns of four, and the others whole, if loaded from row 4 - n.
struct alignas(32) ColumnMask {
    std::array<std::int64_t, 4> bits;
};
constexpr std::array<ColumnMask, 8> columnMask = {{{{noSign, noSign, noSign, noSign}},
                                                   {{noSign, noSign, noSign, noSign}},
                                                   {{noSign, noSign, noSign, noSign}},
                                                   {{noSign, noSign, noSign, noSign}},
                                                   {},
                                                   {},
                                                   {},
                                                   {}}};

/// A cell less 2^52 units. With d = |x - y|, bits(1 - min(d, 1/2)) and bits(max(d, 1/2)) lie between the bits of 1/2 and
/// of 1, where they count in units of 2^-53, and their difference is (1 - d) - 1/2 in these units.
VARNOLIX_AVX2 inline __m256i cellUnits(const KernelColumn& left, const KernelColumn& right, __m256d mask) {
    const __m256d half = _mm256_set1_pd(0.5);
    const __m256d difference = _mm256_sub_pd(_mm256_load_pd(left.values.data()), _mm256_load_pd(right.values.data()));
    const __m256d distance = _mm256_and_pd(difference, mask);
    const __m256d cell = _mm256_sub_pd(_mm256_set1_pd(1.0), _mm256_min_pd(distance, half));
    return _mm256_sub_epi64(_mm256_castpd_si256(cell), _mm256_castpd_si256(_mm256_max_pd(distance, half)));
}

VARNOLIX_AVX2 inline __m256i stepUnits(const KernelColumn* left, const KernelColumn* right, const ColumnMask* masks) {
    const auto column = [&](std::size_t k) VARNOLIX_AVX2 {
        return cellUnits(left[k], right[k], _mm256_castsi256_pd(load(&masks[k])));
    };
    return _mm256_add_epi64(_mm256_add_epi64(column(0), column(1)), _mm256_add_epi64(column(2), column(3)));
}

VARNOLIX_AVX2 void sumCells(const Facing* items, std::size_t count, std::int64_t* sums) {
    for (std::size_t item = 0; item < count; ++item) {
        const KernelColumn* left = items[item].left;
        const KernelColumn* right = items[item].right;
        std::size_t columns = items[item].columns;
        __m256i lanes = _mm256_setzero_si256();
        // What the steps leave out of each cell, less the perfect cells of the columns that the last step masks out.
        std::int64_t sum = static_cast<std::int64_t>(columns * 4) << 52;
        for (; columns > columnsPerSumStep; columns -= columnsPerSumStep) {
            lanes = _mm256_add_epi64(lanes, stepUnits(left, right, columnMask.data()));
            left += columnsPerSumStep;
            right += columnsPerSumStep;
        }
        const std::size_t masked = columnsPerSumStep - columns;
        lanes = _mm256_add_epi64(lanes, stepUnits(left, right, columnMask.data() + masked));
        sum -= static_cast<std::int64_t>(masked * 4) << 52;
        const __m128i halves = _mm_add_epi64(_mm256_castsi256_si128(lanes), _mm256_extracti128_si256(lanes, 1));
        sums[item] = sum + _mm_cvtsi128_si64(halves) + _mm_extract_epi64(halves, 1);
    }
}

}  // namespace

Stages avx2Stages() {
    return {filterShiftsOf, sumCells};
}

bool hasAvx2() {
    return __builtin_cpu_supports("avx2");
}

}  // namespace varnolix::kernel

#else

namespace varnolix::kernel {

Stages avx2Stages() {
    return portableStages();
}

bool hasAvx2() {
    return false;
}

}  // namespace varnolix::kernel

#endif
