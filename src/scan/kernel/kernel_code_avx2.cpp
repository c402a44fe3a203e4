// The steps for processors with AVX2. They are chosen at run time, so the program needs no special build.

#ifdef __x86_64__

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <bit>

#define VARNOLIX_TARGET __attribute__((target("avx2,popcnt")))
#include "scan/kernel/kernel_code_vectors.h"

namespace varnolix::kernel {

namespace {

constexpr std::ptrdiff_t columnsPerSumStep = 4;
static_assert(columnsPerSumStep <= mostColumnsAtOnce);
constexpr std::size_t lanesPerStep = 4;

VARNOLIX_TARGET inline __m256i loadAligned(const void* from) {
    return _mm256_load_si256(static_cast<const __m256i*>(from));
}

/// The smallest word of each lane, repeated four times.
VARNOLIX_TARGET inline __m256i smallestWords(__m256i words) {
    const __m256i ofTwo = _mm256_min_epu16(words, _mm256_srli_epi64(words, 32));
    const __m256i ofFour = _mm256_min_epu16(ofTwo, _mm256_srli_epi64(ofTwo, 16));
    return _mm256_shuffle_epi8(ofFour, _mm256_set_epi8(9, 8, 9, 8, 9, 8, 9, 8, 1, 0, 1, 0, 1, 0, 1, 0, 9, 8, 9, 8, 9, 8,
                                                       9, 8, 1, 0, 1, 0, 1, 0, 1, 0));
}

/// Sets all bits of the words that are at most the limit, and clears the other words.
VARNOLIX_TARGET inline __m256i atMost(__m256i words, __m256i limit) {
    return _mm256_cmpeq_epi16(_mm256_subs_epu16(words, limit), _mm256_setzero_si256());
}

struct alignas(32) LaneOrder {
    std::array<std::int32_t, 2 * lanesPerStep> halves;
};

/// Element m moves the lanes in the bit mask m to the front.
constexpr std::array<LaneOrder, 1U << lanesPerStep> laneOrders() {
    std::array<LaneOrder, 1U << lanesPerStep> orders{};
    for (std::size_t mask = 0; mask < orders.size(); ++mask) {
        std::size_t front = 0;
        for (std::size_t lane = 0; lane < lanesPerStep; ++lane) {
            if ((mask >> lane & 1U) != 0) {
                orders[mask].halves[front++] = static_cast<std::int32_t>(2 * lane);
                orders[mask].halves[front++] = static_cast<std::int32_t>(2 * lane + 1);
            }
        }
    }
    return orders;
}
constexpr std::array<LaneOrder, 1U << lanesPerStep> toFront = laneOrders();

constexpr std::int64_t noSign = 0x7FFFFFFFFFFFFFFF;

// Four masks from row 4 - n on clear the signs in the first n of four columns, and all bits in the others.
struct alignas(32) CellMask {
    std::array<std::int64_t, 4> bits;
};
constexpr std::array<CellMask, 8> cellMasks = {{{{noSign, noSign, noSign, noSign}},
                                                {{noSign, noSign, noSign, noSign}},
                                                {{noSign, noSign, noSign, noSign}},
                                                {{noSign, noSign, noSign, noSign}},
                                                {},
                                                {},
                                                {},
                                                {}}};

/// A cell minus 2^52 units. With d = |x - y|, bits(1 - min(d, 1/2)) and bits(max(d, 1/2)) lie between the bits of 1/2
/// and of 1, where they count in units of 2^-53, and their difference is (1 - d) - 1/2 in these units.
VARNOLIX_TARGET inline __m256i cellUnits(const KernelColumn& left, const KernelColumn& right, __m256d mask) {
    const __m256d half = _mm256_set1_pd(0.5);
    const __m256d difference = _mm256_sub_pd(_mm256_load_pd(left.values.data()), _mm256_load_pd(right.values.data()));
    const __m256d distance = _mm256_and_pd(difference, mask);
    const __m256d cell = _mm256_sub_pd(_mm256_set1_pd(1.0), _mm256_min_pd(distance, half));
    return _mm256_sub_epi64(_mm256_castpd_si256(cell), _mm256_castpd_si256(_mm256_max_pd(distance, half)));
}

VARNOLIX_TARGET inline __m256i stepUnits(const KernelColumn* left, const KernelColumn* right, const CellMask* masks) {
    const auto column = [&](std::size_t k) VARNOLIX_TARGET {
        return cellUnits(left[k], right[k], _mm256_castsi256_pd(loadAligned(&masks[k])));
    };
    return _mm256_add_epi64(_mm256_add_epi64(column(0), column(1)), _mm256_add_epi64(column(2), column(3)));
}

struct Vectors {
    static constexpr std::size_t lanes = lanesPerStep;

    VARNOLIX_TARGET static __m256i zero() { return _mm256_setzero_si256(); }
    VARNOLIX_TARGET static __m256i spread(const KernelLevels* columns) {
        return _mm256_broadcastq_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(columns)));
    }
    VARNOLIX_TARGET static __m256i load(const KernelLevelPairs& pairs, std::size_t firstLane) {
        return loadAligned(&pairs.lanes[firstLane]);
    }

    VARNOLIX_TARGET static __m256i columnMask(int columns) {
        return _mm256_set1_epi64x(columns == 1 ? 0xFFFFFFFFLL : -1LL);
    }
    VARNOLIX_TARGET static __m256i masked(__m256i pair, __m256i mask) { return _mm256_and_si256(pair, mask); }

    VARNOLIX_TARGET static __m256i addDistance(__m256i sum, __m256i a, __m256i b) {
        return _mm256_add_epi64(sum, _mm256_sad_epu8(a, b));
    }

    VARNOLIX_TARGET static __m256i inWords(__m256i original, __m256i rightReversed, __m256i leftReversed,
                                           __m256i bothReversed) {
        const __m256i low = _mm256_or_si256(original, _mm256_slli_epi64(rightReversed, 16));
        const __m256i high = _mm256_or_si256(leftReversed, _mm256_slli_epi64(bothReversed, 16));
        return _mm256_or_si256(low, _mm256_slli_epi64(high, 32));
    }

    VARNOLIX_TARGET static __m256i partnerIndices(const std::uint32_t* motifs) {
        return _mm256_cvtepu32_epi64(_mm_load_si128(reinterpret_cast<const __m128i*>(motifs)));
    }

    VARNOLIX_TARGET static __m256i withPlace(__m256i indices, std::int64_t bits) {
        return _mm256_or_si256(indices, _mm256_set1_epi64x(bits));
    }

    VARNOLIX_TARGET static std::size_t keep(__m256i words, DistanceLimits limits, __m256i places, unsigned wanted,
                                            Rivals* rivals, Place* keptPlaces) {
        const __m256i smallest = smallestWords(words);
        const __m256i possible = atMost(smallest, _mm256_set1_epi16(limits.greatest));
        const unsigned within = static_cast<unsigned>(_mm256_movemask_pd(_mm256_castsi256_pd(possible))) & wanted;
        const __m256i near = atMost(words, _mm256_adds_epu16(smallest, _mm256_set1_epi16(limits.margin)));
        const __m256i order = loadAligned(&toFront[within]);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(rivals), _mm256_permutevar8x32_epi32(near, order));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(keptPlaces), _mm256_permutevar8x32_epi32(places, order));
        return static_cast<std::size_t>(std::popcount(within));
    }

    VARNOLIX_TARGET static std::int64_t sumOf(const KernelColumn* left, const KernelColumn* right,
                                              std::ptrdiff_t columns) {
        __m256i sums = _mm256_setzero_si256();
        // Adds what cellUnits() subtracts from each cell. A masked column counts as four perfect cells, which are
        // subtracted below.
        std::int64_t sum = columns * 4 << 52;
        for (; columns > columnsPerSumStep; columns -= columnsPerSumStep) {
            sums = _mm256_add_epi64(sums, stepUnits(left, right, cellMasks.data()));
            left += columnsPerSumStep;
            right += columnsPerSumStep;
        }
        const std::ptrdiff_t masked = columnsPerSumStep - columns;
        sums = _mm256_add_epi64(sums, stepUnits(left, right, cellMasks.data() + masked));
        sum -= masked * 4 << 52;
        const __m128i halves = _mm_add_epi64(_mm256_castsi256_si128(sums), _mm256_extracti128_si256(sums, 1));
        return sum + _mm_cvtsi128_si64(halves) + _mm_extract_epi64(halves, 1);
    }
};

}  // namespace

CodeSteps avx2Steps() {
    return vectorSteps<Vectors>();
}

bool hasAvx2() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("popcnt");
}

}  // namespace varnolix::kernel

#endif
