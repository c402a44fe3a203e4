#include "scan/pair_kernel.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <span>
#include <vector>

#include "plain_form.h"

// The pair kernel against the plain form, over motifs as they are met: families whose members are shifted, reversed and
// counted anew, among motifs without kin.

namespace {

using namespace varnolix;
using Clock = std::chrono::steady_clock;

constexpr std::size_t motifCount = 2000;
constexpr std::size_t leastLength = 6;
constexpr std::size_t mostLength = 24;
constexpr double cutoff = 0.75;
constexpr std::uint32_t seed = 20240229;

class MotifSource {
  public:
    std::vector<data> motifs(std::size_t count) {
        std::vector<data> result;
        while (result.size() < count) {
            const Matrix ancestor = probabilities(uniform(leastLength, mostLength));
            const std::size_t kin = chance(0.5) ? 1 : uniform(2, 10);
            for (std::size_t n = 0; n < kin && result.size() < count; ++n) {
                data motif;
                motif.matrix = counted(kin == 1 ? ancestor : relative(ancestor));
                motif.revCompMatrix = reversed(motif.matrix);
                result.push_back(motif);
            }
        }
        std::shuffle(result.begin(), result.end(), random_);
        return result;
    }

  private:
    std::size_t uniform(std::size_t least, std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(least, most)(random_);
    }

    bool chance(double probability) { return std::bernoulli_distribution(probability)(random_); }

    /// Sharp, mixed and flat columns; the shape of the gamma distribution decides.
    Matrix probabilities(std::size_t length) {
        Matrix result(length);
        for (Column& column : result) {
            constexpr std::array<double, 3> shapes = {0.05, 0.15, 0.4};
            std::gamma_distribution<double> weight(shapes[uniform(0, 2)]);
            double sum = 0;
            for (double& value : column) {
                value = weight(random_) + 1e-3;
                sum += value;
            }
            for (double& value : column) {
                value /= sum;
            }
        }
        return result;
    }

    /// A piece of the ancestor with other columns at its ends, on either strand.
    Matrix relative(const Matrix& ancestor) {
        const std::size_t cut = uniform(0, std::min<std::size_t>(3, ancestor.size() - leastLength));
        const std::size_t added = uniform(0, std::min<std::size_t>(3, mostLength - ancestor.size()));
        Matrix result = probabilities(added);
        result.insert(result.end(), ancestor.begin() + static_cast<std::ptrdiff_t>(cut), ancestor.end());
        if (chance(0.5)) {
            std::reverse(result.begin(), result.end());
            for (Column& column : result) {
                std::reverse(column.begin(), column.end());
            }
        }
        return result;
    }

    /// Frequencies from a small number of sites.
    Matrix counted(const Matrix& source) {
        const std::size_t sites = uniform(8, 60);
        Matrix result;
        for (const Column& column : source) {
            std::discrete_distribution<std::size_t> base(column.begin(), column.end());
            Column counts{};
            for (std::size_t site = 0; site < sites; ++site) {
                counts[base(random_)] += 1.0;
            }
            for (double& value : counts) {
                value /= static_cast<double>(sites);
            }
            result.push_back(counts);
        }
        return result;
    }

    /// The program's reverse complement: each column swaps only the pair that holds its best base.
    static Matrix reversed(const Matrix& matrix) {
        Matrix result(matrix.rbegin(), matrix.rend());
        for (Column& column : result) {
            const auto best = std::max_element(column.begin(), column.end()) - column.begin();
            if (best == 0 || best == 3) {
                std::swap(column[0], column[3]);
            } else {
                std::swap(column[1], column[2]);
            }
        }
        return result;
    }

    std::mt19937 random_{seed};
};

const std::vector<data>& motifs() {
    static const std::vector<data> result = MotifSource().motifs(motifCount);
    return result;
}

/// Left motifs 0, stride, 2 stride, ... against all later motifs. Returns the number of pairs.
std::size_t runKernel(std::size_t stride, KernelCode code, std::size_t& keptCount) {
    static const KernelMotifs prepared(motifs());
    static const CutoffTable table(cutoff);
    std::vector<ScoredShift> kept;
    std::size_t pairs = 0;
    for (std::size_t i = 0; i < motifCount; i += stride) {
        kept.clear();
        scoreShifts(prepared, i, prepared, i + 1, motifCount, table, OuterMotif::left, kept, code);
        benchmark::DoNotOptimize(kept.data());
        keptCount += kept.size();
        pairs += motifCount - i - 1;
    }
    return pairs;
}

std::size_t runPlainForm(std::size_t stride, std::size_t& keptCount) {
    std::vector<plain::Alignment> kept;
    std::size_t pairs = 0;
    for (std::size_t i = 0; i < motifCount; i += stride) {
        kept.clear();
        for (std::size_t j = i + 1; j < motifCount; ++j) {
            plain::scorePair(motifs()[i], motifs()[j], cutoff, kept);
        }
        benchmark::DoNotOptimize(kept.data());
        keptCount += kept.size();
        pairs += motifCount - i - 1;
    }
    return pairs;
}

template <typename Run>
double secondsOf(Run run) {
    const Clock::time_point start = Clock::now();
    run();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void kernelAllPairs(benchmark::State& state, KernelCode code) {
    const std::vector<KernelCode> codes = kernelCodes();
    if (std::find(codes.begin(), codes.end(), code) == codes.end()) {
        state.SkipWithError("this processor cannot run it");
        return;
    }
    std::size_t pairs = 0;
    std::size_t keptCount = 0;
    for ([[maybe_unused]] auto _ : state) {
        pairs += runKernel(1, code, keptCount);
    }
    state.counters["pairs/s"] = benchmark::Counter(static_cast<double>(pairs), benchmark::Counter::kIsRate);
    state.counters["kept/pair"] = static_cast<double>(keptCount) / static_cast<double>(pairs);
}
BENCHMARK_CAPTURE(kernelAllPairs, avx512, KernelCode::avx512)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(kernelAllPairs, avx2, KernelCode::avx2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(kernelAllPairs, portable, KernelCode::portable)->Unit(benchmark::kMillisecond);

void plainFormSomePairs(benchmark::State& state) {
    std::size_t pairs = 0;
    std::size_t keptCount = 0;
    for ([[maybe_unused]] auto _ : state) {
        pairs += runPlainForm(40, keptCount);
    }
    state.counters["pairs/s"] = benchmark::Counter(static_cast<double>(pairs), benchmark::Counter::kIsRate);
    state.counters["kept/pair"] = static_cast<double>(keptCount) / static_cast<double>(pairs);
}
BENCHMARK(plainFormSomePairs)->Unit(benchmark::kMillisecond);

/// Both in turn over the same pairs; the time of the benchmark is the kernel's.
void kernelAgainstPlainForm(benchmark::State& state) {
    constexpr std::size_t stride = 40;
    double kernelSeconds = 0;
    double plainSeconds = 0;
    std::size_t pairs = 0;
    for ([[maybe_unused]] auto _ : state) {
        std::size_t kept = 0;
        const double kernelTime = secondsOf([&] { pairs += runKernel(stride, fastestKernelCode(), kept); });
        plainSeconds += secondsOf([&] { runPlainForm(stride, kept); });
        kernelSeconds += kernelTime;
        state.SetIterationTime(kernelTime);
    }
    const double perPair = 1e9 / static_cast<double>(pairs);
    state.counters["kernel_ns/pair"] = kernelSeconds * perPair;
    state.counters["plain_ns/pair"] = plainSeconds * perPair;
    state.counters["ratio"] = plainSeconds / kernelSeconds;
}
BENCHMARK(kernelAgainstPlainForm)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
