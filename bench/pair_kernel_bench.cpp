#include "scan/kernel/pair_kernel.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "against_plain_form.h"
#include "motif_source.h"
#include "plain/plain_scan.h"

// The pair kernel in one thread, compared with the plain form.

namespace {

using namespace varnolix;

constexpr std::size_t motifCount = 2000;
constexpr double cutoff = 0.75;

const std::vector<data>& motifs() {
    static const std::vector<data> result = bench::motifsOfCounts(bench::countMatrices(motifCount));
    return result;
}

/// Scores the left motifs 0, stride, 2 * stride, ... against all later motifs. Returns the number of pairs.
std::size_t runKernel(std::size_t stride, KernelCode code, std::size_t& keptCount) {
    static const KernelMotifs prepared(motifs());
    static const CutoffTable table(cutoff);
    std::vector<ScoredShift> kept;
    KernelScratch scratch;
    std::size_t pairs = 0;
    for (std::size_t i = 0; i < motifCount; i += stride) {
        kept.clear();
        scoreShifts(prepared, i, prepared, i + 1, motifCount, table, OuterMotif::left, kept, scratch, code);
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

/// An item is a pair.
void kernelAgainstPlainForm(benchmark::State& state) {
    constexpr std::size_t stride = 40;
    std::size_t kept = 0;
    const auto kernel = [&] { return runKernel(stride, fastestKernelCode(), kept); };
    const std::size_t pairs = kernel();
    bench::againstPlainForm(state, static_cast<double>(pairs), kernel, [&] { runPlainForm(stride, kept); });
}
BENCHMARK(kernelAgainstPlainForm)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
