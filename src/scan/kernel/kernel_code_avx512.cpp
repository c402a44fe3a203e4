// The steps for processors with AVX-512: as in kernel_code_avx2.cpp, with twice the lanes, and masks in place of
// tables.

#ifdef __x86_64__

// The headers of g++ 12 leave registers undefined on purpose, and the compiler warns about it.
#if !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#pragma GCC diagnostic ignored "-Wuninitialized"
#endif
#include <immintrin.h>

#include <bit>

#define VARNOLIX_TARGET __attribute__((target("avx512f,avx512bw,avx512dq,popcnt")))
#include "scan/kernel/kernel_code_vectors.h"

namespace varnolix::kernel {

namespace {

constexpr std::ptrdiff_t columnsPerVector = 2;
constexpr std::ptrdiff_t vectorsPerSumStep = 4;
constexpr std::ptrdiff_t columnsPerSumStep = vectorsPerSumStep * columnsPerVector;
static_assert(columnsPerSumStep <= mostColumnsAtOnce);
constexpr __mmask16 firstColumnOfPairs = 0x5555;
constexpr auto allColumns = static_cast<__mmask16>(-1);

/// The smallest word of each lane, repeated four times.
VARNOLIX_TARGET inline __m512i smallestWords(__m512i words) {
    const __m512i ofTwo = _mm512_min_epu16(words, _mm512_srli_epi64(words, 32));
    const __m512i ofFour = _mm512_min_epu16(ofTwo, _mm512_srli_epi64(ofTwo, 16));
    return _mm512_shuffle_epi8(ofFour, _mm512_set4_epi32(0x09080908, 0x09080908, 0x01000100, 0x01000100));
}

/// The cells of two columns. They are multiplied by 2^53 before the subtraction and rounded once, after it. As the
/// factor is a power of two, this rounds at the same bit as rounding the cell itself.
VARNOLIX_TARGET inline __m512i cellUnits(const KernelColumn* left, const KernelColumn* right) {
    const __m512d units = _mm512_set1_pd(0x1p53);
    const __m512d difference = _mm512_sub_pd(_mm512_loadu_pd(left), _mm512_loadu_pd(right));
    return _mm512_cvtpd_epi64(_mm512_fnmadd_pd(_mm512_abs_pd(difference), units, units));
}

struct Vectors {
    static constexpr std::size_t lanes = kernelLanes;

    VARNOLIX_TARGET static __m512i zero() { return _mm512_setzero_si512(); }
    VARNOLIX_TARGET static __m512i spread(const KernelLevels* columns) {
        return _mm512_broadcastq_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(columns)));
    }
    VARNOLIX_TARGET static __m512i load(const KernelLevelPairs& pairs, std::size_t /*firstLane*/) {
        return _mm512_load_si512(&pairs);
    }

    VARNOLIX_TARGET static __mmask16 columnMask(int columns) { return columns == 1 ? firstColumnOfPairs : allColumns; }
    VARNOLIX_TARGET static __m512i masked(__m512i pair, __mmask16 mask) { return _mm512_maskz_mov_epi32(mask, pair); }

    VARNOLIX_TARGET static __m512i addDistance(__m512i sum, __m512i a, __m512i b) {
        return _mm512_add_epi64(sum, _mm512_sad_epu8(a, b));
    }

    VARNOLIX_TARGET static __m512i inWords(__m512i original, __m512i rightReversed, __m512i leftReversed,
                                           __m512i bothReversed) {
        const __m512i low = _mm512_or_si512(original, _mm512_slli_epi64(rightReversed, 16));
        const __m512i high = _mm512_or_si512(leftReversed, _mm512_slli_epi64(bothReversed, 16));
        return _mm512_or_si512(low, _mm512_slli_epi64(high, 32));
    }

    VARNOLIX_TARGET static __m512i partnerIndices(const std::uint32_t* motifs) {
        return _mm512_cvtepu32_epi64(_mm256_load_si256(reinterpret_cast<const __m256i*>(motifs)));
    }

    VARNOLIX_TARGET static __m512i withPlace(__m512i indices, std::int64_t bits) {
        return _mm512_or_si512(indices, _mm512_set1_epi64(bits));
    }

    VARNOLIX_TARGET static std::size_t keep(__m512i words, DistanceLimits limits, __m512i places, unsigned wanted,
                                            Rivals* rivals, Place* keptPlaces) {
        const __m512i smallest = smallestWords(words);
        const __m512i greatest = _mm512_set1_epi16(limits.greatest);
        const __mmask8 within = _mm512_mask_cmple_epu64_mask(static_cast<__mmask8>(wanted), smallest, greatest);
        const __m512i farthest = _mm512_adds_epu16(smallest, _mm512_set1_epi16(limits.margin));
        const __m512i possible = _mm512_movm_epi16(_mm512_cmple_epu16_mask(words, farthest));
        _mm512_storeu_si512(rivals, _mm512_maskz_compress_epi64(within, possible));
        _mm512_storeu_si512(keptPlaces, _mm512_maskz_compress_epi64(within, places));
        return static_cast<std::size_t>(std::popcount(static_cast<unsigned>(within)));
    }

    VARNOLIX_TARGET static std::int64_t sumOf(const KernelColumn* left, const KernelColumn* right,
                                              std::ptrdiff_t columns) {
        __m512i sums = _mm512_setzero_si512();
        const auto cellsAt = [&](std::ptrdiff_t vector) VARNOLIX_TARGET {
            const std::ptrdiff_t column = vector * columnsPerVector;
            return cellUnits(left + column, right + column);
        };
        for (; columns > columnsPerSumStep; columns -= columnsPerSumStep) {
            for (std::ptrdiff_t vector = 0; vector < vectorsPerSumStep; ++vector) {
                sums = _mm512_add_epi64(sums, cellsAt(vector));
            }
            left += columnsPerSumStep;
            right += columnsPerSumStep;
        }
        const std::uint32_t cells = ~std::uint32_t{0} >> 4 * (columnsPerSumStep - columns);
        for (std::ptrdiff_t vector = 0; vector < vectorsPerSumStep; ++vector) {
            sums = _mm512_mask_add_epi64(sums, static_cast<__mmask8>(cells >> 8 * vector), sums, cellsAt(vector));
        }
        return _mm512_reduce_add_epi64(sums);
    }
};

}  // namespace

CodeSteps avx512Steps() {
    return vectorSteps<Vectors>();
}

bool hasAvx512() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("popcnt");
}

}  // namespace varnolix::kernel

#endif
