#include "job/significance/vector_steps.h"

#include <array>
#include <cstring>

// Tested by vector_steps_test.cpp: all codes against plain loops.

namespace varnolix::job {

namespace {

#define VARNOLIX_INLINE __attribute__((always_inline)) inline

template <std::size_t bytes>
struct Vectors {
    using Doubles __attribute__((vector_size(bytes))) = double;
    using Floats __attribute__((vector_size(bytes))) = float;
    using Integers __attribute__((vector_size(bytes))) = std::int32_t;
};

template <class Vector, class Value>
VARNOLIX_INLINE void load(Vector& vector, const Value* from) {
    std::memcpy(&vector, from, sizeof(Vector));
}

template <class Vector, class Value>
VARNOLIX_INLINE void store(const Vector& vector, Value* to) {
    std::memcpy(to, &vector, sizeof(Vector));
}

/// The distance of two values in each lane.
template <class Floats, class Integers>
VARNOLIX_INLINE void addDistance(Floats& sum, const Floats& one, const Floats& other, const Integers& noSign) {
    Floats difference = one - other;
    sum += reinterpret_cast<Floats>(reinterpret_cast<Integers>(difference) & noSign);
}

template <std::size_t bytes>
VARNOLIX_INLINE void measureWith(const Column& column, BaseRows<float> others, std::size_t columns, bool swapsOnePair,
                                 float stepsPerOne, std::int32_t greatest, std::int32_t* distances) {
    using Floats = typename Vectors<bytes>::Floats;
    using Integers = typename Vectors<bytes>::Integers;
    constexpr std::size_t lanes = bytes / sizeof(float);
    constexpr std::size_t bases = 4;
    const Integers noSign = Integers{} + 0x7FFFFFFF;
    const Integers most = Integers{} + greatest;
    std::array<Floats, bases> own;
    for (std::size_t base = 0; base < bases; ++base) own[base] = Floats{} + static_cast<float>(column[base]);
    std::int32_t* secondDistances = distances + columns + elementsPastEnd;
    for (std::size_t n = 0; n < columns; n += lanes) {
        std::array<Floats, bases> other;
        for (std::size_t base = 0; base < bases; ++base) load(other[base], others.rows + base * others.stride + n);
        // The pairs A and T, and C and G, as they are and swapped.
        Floats weak{};
        Floats strong{};
        Floats swappedWeak{};
        Floats swappedStrong{};
        addDistance(weak, own[0], other[0], noSign);
        addDistance(weak, own[3], other[3], noSign);
        addDistance(strong, own[1], other[1], noSign);
        addDistance(strong, own[2], other[2], noSign);
        addDistance(swappedWeak, own[0], other[3], noSign);
        addDistance(swappedWeak, own[3], other[0], noSign);
        addDistance(swappedStrong, own[1], other[2], noSign);
        addDistance(swappedStrong, own[2], other[1], noSign);
        const Floats first = swapsOnePair ? swappedWeak + strong : weak + strong;
        const Floats second = swapsOnePair ? weak + swappedStrong : swappedWeak + swappedStrong;
        const Integers steps = __builtin_convertvector(first * stepsPerOne, Integers);
        const Integers secondSteps = __builtin_convertvector(second * stepsPerOne, Integers);
        store(steps < most ? steps : most, distances + n);
        store(secondSteps < most ? secondSteps : most, secondDistances + n);
    }
}

template <std::size_t bytes>
VARNOLIX_INLINE void measureFinelyWith(const Column& column, BaseRows<float> others, const float* weights,
                                       std::size_t columns, float* distances) {
    using Floats = typename Vectors<bytes>::Floats;
    using Integers = typename Vectors<bytes>::Integers;
    constexpr std::size_t lanes = bytes / sizeof(float);
    constexpr std::size_t bases = 4;
    const Integers noSign = Integers{} + 0x7FFFFFFF;
    std::array<Floats, bases> own;
    for (std::size_t base = 0; base < bases; ++base) own[base] = Floats{} + static_cast<float>(column[base]);
    for (std::size_t n = 0; n < columns; n += lanes) {
        Floats distance{};
        for (std::size_t base = 0; base < bases; ++base) {
            Floats other;
            load(other, others.rows + base * others.stride + n);
            addDistance(distance, own[base], other, noSign);
        }
        Floats weight;
        load(weight, weights + n);
        store(distance * weight, distances + n);
    }
}

template <std::size_t bytes>
VARNOLIX_INLINE void addDiagonalsWith(const float* firstRow, std::size_t stride, std::size_t rows, std::size_t count,
                                      float* sums) {
    using Floats = typename Vectors<bytes>::Floats;
    constexpr std::size_t lanes = bytes / sizeof(float);
    for (std::size_t n = 0; n < count; n += lanes) {
        Floats sum{};
        for (std::size_t row = 0; row < rows; ++row) {
            Floats distance;
            load(distance, firstRow + row * (stride + 1) + n);
            sum += distance;
        }
        store(sum, sums + n);
    }
}

/// @tparam atOnce vectors of values that are worked out side by side, as many as the registers take
template <std::size_t bytes, std::size_t atOnce>
VARNOLIX_INLINE void convolveWith(const double* before, const DistanceShare* shares, std::size_t count,
                                  double* values) {
    using Doubles = typename Vectors<bytes>::Doubles;
    constexpr std::size_t lanes = bytes / sizeof(double);
    static_assert(convolvedAtOnce % (lanes * atOnce) == 0);
    for (std::size_t n = 0; n < convolvedAtOnce; n += lanes * atOnce) {
        std::array<Doubles, atOnce> sums{};
        for (std::size_t k = 0; k < count; ++k) {
            const double* from = before + n - shares[k].step;
            const double share = shares[k].share;
            for (std::size_t vector = 0; vector < atOnce; ++vector) {
                Doubles value;
                load(value, from + vector * lanes);
                sums[vector] += value * share;
            }
        }
        for (std::size_t vector = 0; vector < atOnce; ++vector) store(sums[vector], values + n + vector * lanes);
    }
}

// The same functions for one kind of processor, under the given prefix.
// NOLINTBEGIN(bugprone-macro-parentheses): neither an attribute nor a part of a name may have them
#define VARNOLIX_STEPS(PREFIX, TARGET, BYTES, AT_ONCE)                                                                \
    TARGET void PREFIX##Measure(const Column& column, BaseRows<float> others, std::size_t columns, bool swapsOnePair, \
                                float stepsPerOne, std::int32_t greatest, std::int32_t* distances) {                  \
        measureWith<BYTES>(column, others, columns, swapsOnePair, stepsPerOne, greatest, distances);                  \
    }                                                                                                                 \
    TARGET void PREFIX##MeasureFinely(const Column& column, BaseRows<float> others, const float* weights,             \
                                      std::size_t columns, float* distances) {                                        \
        measureFinelyWith<BYTES>(column, others, weights, columns, distances);                                        \
    }                                                                                                                 \
    TARGET void PREFIX##AddDiagonals(const float* firstRow, std::size_t stride, std::size_t rows, std::size_t count,  \
                                     float* sums) {                                                                   \
        addDiagonalsWith<BYTES>(firstRow, stride, rows, count, sums);                                                 \
    }                                                                                                                 \
    TARGET void PREFIX##Convolve(const double* before, const DistanceShare* shares, std::size_t count,                \
                                 double* values) {                                                                    \
        convolveWith<BYTES, AT_ONCE>(before, shares, count, values);                                                  \
    }                                                                                                                 \
    constexpr VectorSteps PREFIX##Steps = {PREFIX##Measure, PREFIX##MeasureFinely, PREFIX##AddDiagonals,              \
                                           PREFIX##Convolve};

// NOLINTEND(bugprone-macro-parentheses)

VARNOLIX_STEPS(portable, , 16, 4)
#ifdef __x86_64__
VARNOLIX_STEPS(avx2, __attribute__((target("avx2"))), 32, 8)
VARNOLIX_STEPS(avx512, __attribute__((target("avx512f,avx512dq"))), 64, 4)
#endif

}  // namespace

VectorSteps vectorSteps(KernelCode code) {
#ifdef __x86_64__
    switch (code) {
        case KernelCode::avx512:
            return avx512Steps;
        case KernelCode::avx2:
            return avx2Steps;
        case KernelCode::portable:
            break;
    }
#endif
    return portableSteps;
}

}  // namespace varnolix::job
