#include "rank/memory_plan.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "rank/usable_memory.h"
#include "run/settings.h"
#include "run/system/memory_limits.h"
#include "run/system/run_limits.h"
#include "scan/kernel/pair_kernel.h"
#include "scan/region_rule.h"

namespace varnolix {

namespace {

constexpr std::size_t sampledMotifs = 48;

/// Some motifs of the list, evenly spread.
std::vector<data> sample(std::span<const data> motifs) {
    const std::size_t count = std::min(motifs.size(), sampledMotifs);
    std::vector<data> chosen;
    for (std::size_t k = 0; k < count; ++k) chosen.push_back(motifs[k * motifs.size() / count]);
    return chosen;
}

/// The number of all alignments of the pair. It stands for those at or above the cutoff in pairs for the plain form,
/// which would take too long to score for an estimate.
double mostAlignments(const data& left, const data& right, int leastOverlap) {
    const PairLengths lengths{static_cast<int>(left.matrix.size()), static_cast<int>(right.matrix.size())};
    return std::max(0, mostShift(lengths, leastOverlap) - leastShift(lengths, leastOverlap) + 1);
}

double shareOfMemory(double share) {
    return share * static_cast<double>(usableMemory());
}

}  // namespace

double estimatedAlignments(std::span<const data> lefts, std::span<const data> rights, bool isOneList,
                           const AlignmentLimits& limits) {
    const std::vector<data> someLefts = sample(lefts);
    const std::vector<data> someRights = sample(rights);
    const KernelMotifs kernelLefts(someLefts);
    const KernelMotifs kernelRights(someRights);
    std::vector<ScoredShift> kept;
    KernelScratch scratch;
    double alignments = 0;
    double sampledPairs = 0;
    for (std::size_t left = 0; left < someLefts.size(); ++left) {
        // Within one list, no motif is compared with itself, and no pair is compared twice.
        for (std::size_t right = isOneList ? left + 1 : 0; right < someRights.size(); ++right) {
            ++sampledPairs;
            if (limits.suitKernel() && kernelLefts.isExact(left) && kernelRights.isExact(right)) {
                scoreShifts(kernelLefts, left, kernelRights, right, right + 1, limits.cutoffTable, OuterMotif::left,
                            kept, scratch);
            } else {
                alignments += mostAlignments(someLefts[left], someRights[right], limits.leastOverlap);
            }
        }
    }
    if (sampledPairs == 0) return 0;
    alignments += static_cast<double>(kept.size());
    const double pairs = static_cast<double>(lefts.size()) * static_cast<double>(rights.size()) / (isOneList ? 2 : 1);
    return pairs * (alignments / sampledPairs);
}

std::size_t motifsPerBlock(std::size_t motifs, double alignments, double bytes) {
    // The number of pairs grows with the square of the number of motifs.
    const double needed = alignments * sizeof(ScoredShift);
    const auto blocks = static_cast<std::size_t>(needed <= bytes ? 1 : std::ceil(std::sqrt(needed / bytes)));
    return std::max<std::size_t>(1, (motifs + blocks - 1) / blocks);
}

std::size_t motifsPerBlockAgainst(std::size_t motifs, double alignments, double bytes) {
    const double needed = alignments * sizeof(ScoredShift);
    const double share = needed <= bytes ? 1 : bytes / needed;
    return std::max<std::size_t>(1, static_cast<std::size_t>(static_cast<double>(motifs) * share));
}

double surelyNeededBytes() {
    // For both strands: each column, its levels, and the pair of levels in the groups.
    constexpr double perColumn = 2 * (sizeof(KernelColumn) + 3 * sizeof(KernelLevels));
    double columns = 0;
    for (const data& motif : Datasets) {
        if (motif.matrix.size() <= mostKernelColumns) columns += static_cast<double>(motif.matrix.size());
    }
    const int trees = (isLocalTreeDrawn() ? 1 : 0) + (isGlobalTreeDrawn() ? 1 : 0);
    return columns * perColumn + trees * static_cast<double>(pairsOf(Datasets.size())) * sizeof(double);
}

void requireRoom(double bytes) {
    const auto left = static_cast<double>(memoryLeft());
    if (bytes <= left) return;
    const auto inMegabytes = [](double amount) {
        return std::to_string(std::llround(std::ceil(amount / 1e6))) + " MB";
    };
    endForLack("this job needs " + inMegabytes(bytes) + " of memory beside its motifs, and there are only " +
               inMegabytes(left));
}

void planInputScan() {
    heldMotifs =
        motifsPerBlock(Datasets.size(), estimatedAlignments(Datasets, Datasets, true, {overlap, maxScore, simCutoff}),
                       shareOfMemory(alignmentShare));
}

void planCollectionScan() {
    heldMotifs = motifsPerBlockAgainst(
        Datasets.size(), estimatedAlignments(Datasets, DatabaseDatasets, false, {overlap, maxScore, simCutoff}),
        shareOfMemory(alignmentShare));
}

}  // namespace varnolix
