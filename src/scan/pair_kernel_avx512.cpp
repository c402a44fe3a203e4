#include "scan/pair_kernel_stages.h"

// The stages for processors with AVX-512: as pair_kernel_avx2.cpp, with twice the lanes, and masks in place of tables.

#ifdef __x86_64__

// The headers of g++ 12 leave registers undefined on purpose and are warned about.
#if !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#pragma GCC diagnostic ignored "-Wuninitialized"
#endif
#include <immintrin.h>

#include <bit>

#define VARNOLIX_AVX512 __attribute__((target("avx512f,avx512bw,avx512dq,popcnt")))

namespace varnolix::kernel {

namespace {

constexpr int columnsPerVector = 2;
constexpr int vectorsPerSumStep = 4;
constexpr int columnsPerSumStep = vectorsPerSumStep * columnsPerVector;
constexpr __mmask16 firstColumnOfPairs = 0x5555;

VARNOLIX_AVX512 inline __m512i load(const void* from) {
    return _mm512_loadu_si512(from);
}

/// Two columns of the left motif, in every lane.
VARNOLIX_AVX512 inline __m512i spread(const KernelLevels* columns) {
    return _mm512_broadcastq_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(columns)));
}

/// For each lane the distances of both original, right reversed, left reversed, both reversed, as words of 16 bits.
VARNOLIX_AVX512 inline __m512i distances(const KernelLevels* left, std::size_t leftLength,
                                         const KernelLevelPairs* right, int columns) {
    __m512i original = _mm512_setzero_si512();
    __m512i rightReversed = original;
    __m512i leftReversed = original;
    __m512i bothReversed = original;
    const auto add = [&](__m512i a, __m512i aReversed, __m512i b, __m512i bReversed) VARNOLIX_AVX512 {
        original = _mm512_add_epi64(original, _mm512_sad_epu8(a, b));
        rightReversed = _mm512_add_epi64(rightReversed, _mm512_sad_epu8(a, bReversed));
        leftReversed = _mm512_add_epi64(leftReversed, _mm512_sad_epu8(aReversed, b));
        bothReversed = _mm512_add_epi64(bothReversed, _mm512_sad_epu8(aReversed, bReversed));
    };
    for (; columns > columnsPerVector; columns -= columnsPerVector) {
        add(spread(left), spread(left + leftLength), load(right), load(right + 1));
        left += columnsPerVector;
        right += 2 * columnsPerVector;
    }
    // The last step counts one column or two.
    const __mmask16 mask = columns == 1 ? firstColumnOfPairs : static_cast<__mmask16>(-1);
    const auto masked = [&](__m512i pair) VARNOLIX_AVX512 { return _mm512_maskz_mov_epi32(mask, pair); };
    add(masked(spread(left)), masked(spread(left + leftLength)), masked(load(right)), masked(load(right + 1)));
    const __m512i low = _mm512_or_si512(original, _mm512_slli_epi64(rightReversed, 16));
    const __m512i high = _mm512_or_si512(leftReversed, _mm512_slli_epi64(bothReversed, 16));
    return _mm512_or_si512(low, _mm512_slli_epi64(high, 32));
}

/// For each lane its smallest word, four times.
VARNOLIX_AVX512 inline __m512i smallestWords(__m512i words) {
    const __m512i ofTwo = _mm512_min_epu16(words, _mm512_srli_epi64(words, 32));
    const __m512i ofFour = _mm512_min_epu16(ofTwo, _mm512_srli_epi64(ofTwo, 16));
    return _mm512_shuffle_epi8(ofFour, _mm512_set4_epi32(0x09080908, 0x09080908, 0x01000100, 0x01000100));
}

VARNOLIX_AVX512 void filterShifts(const LeftMotif& left, const Partners& partners, const CutoffTable& cutoff,
                                  Candidates& candidates) {
    const int least = static_cast<int>(leastKernelColumns);
    const int leftLength = left.length;
    const int rightLength = static_cast<int>(partners.group.length);
    const KernelLevels* leftLevels = left.levels;
    const KernelLevelPairs* rightLevels = partners.motifs.pairs(partners.group);
    const __mmask8 wanted = static_cast<__mmask8>(partners.lanes);
    const __m512i indices =
        _mm512_cvtepu32_epi64(_mm256_load_si256(reinterpret_cast<const __m256i*>(partners.group.motifs.data())));
    std::size_t count = candidates.count;
    for (int shift = least - leftLength; shift <= rightLength - least; ++shift) {
        const Overlap overlap = overlapAt(shift, leftLength, rightLength);
        const std::int32_t greatest = cutoff.greatestDistance(static_cast<std::size_t>(overlap.columns));
        if (greatest < 0) {
            continue;
        }
        const __m512i words = distances(leftLevels + overlap.leftStart, static_cast<std::size_t>(leftLength),
                                        rightLevels + 2 * overlap.rightStart, overlap.columns);
        const __m512i smallest = smallestWords(words);
        const __m512i limit = _mm512_set1_epi16(static_cast<std::int16_t>(greatest));
        const __mmask8 lanes = _mm512_mask_cmple_epu64_mask(wanted, smallest, limit);
        const __m512i margin = _mm512_set1_epi16(static_cast<std::int16_t>(rivalDistancePerColumn * overlap.columns));
        const __mmask32 possible = _mm512_cmple_epu16_mask(words, _mm512_adds_epu16(smallest, margin));
        const __m512i places = _mm512_or_si512(indices, _mm512_set1_epi64(placeBits(shift, overlap.columns)));
        // Written always and kept by moving on: a branch would be foretold badly, and spoil the others.
        _mm512_storeu_si512(&candidates.rivals[count], _mm512_maskz_compress_epi64(lanes, _mm512_movm_epi16(possible)));
        _mm512_storeu_si512(&candidates.places[count], _mm512_maskz_compress_epi64(lanes, places));
        count += static_cast<std::size_t>(std::popcount(static_cast<unsigned>(lanes)));
    }
    candidates.count = count;
}

/// The cells of two columns. Multiplying by 2^53 before the subtraction and rounding once, after it, rounds where the
/// cell itself is rounded, as the factor is a power of two.
VARNOLIX_AVX512 inline __m512i cellUnits(const KernelColumn* left, const KernelColumn* right) {
    const __m512d units = _mm512_set1_pd(0x1p53);
    const __m512d difference = _mm512_sub_pd(_mm512_loadu_pd(left), _mm512_loadu_pd(right));
    return _mm512_cvtpd_epi64(_mm512_fnmadd_pd(_mm512_abs_pd(difference), units, units));
}

VARNOLIX_AVX512 inline std::int64_t sumOf(const KernelColumn* left, const KernelColumn* right, int columns) {
    __m512i lanes = _mm512_setzero_si512();
    for (; columns > columnsPerSumStep; columns -= columnsPerSumStep) {
        for (int vector = 0; vector < vectorsPerSumStep; ++vector) {
            lanes =
                _mm512_add_epi64(lanes, cellUnits(left + vector * columnsPerVector, right + vector * columnsPerVector));
        }
        left += columnsPerSumStep;
        right += columnsPerSumStep;
    }
    const std::uint32_t cells = ~std::uint32_t{0} >> 4 * (columnsPerSumStep - columns);
    for (int vector = 0; vector < vectorsPerSumStep; ++vector) {
        const __mmask8 mask = static_cast<__mmask8>(cells >> 8 * vector);
        lanes = _mm512_mask_add_epi64(lanes, mask, lanes,
                                      cellUnits(left + vector * columnsPerVector, right + vector * columnsPerVector));
    }
    return _mm512_reduce_add_epi64(lanes);
}

VARNOLIX_AVX512 void sumCells(const Facing* items, std::size_t count, std::int64_t* sums) {
    for (std::size_t n = 0; n < count; ++n) {
        sums[n] = sumOf(items[n].left, items[n].right, items[n].columns);
    }
}

}  // namespace

Stages avx512Stages() {
    return {filterShifts, sumCells};
}

bool hasAvx512() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("popcnt");
}

}  // namespace varnolix::kernel

#endif
