#include "run/memory_plan.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

#include "scan/pair_scan.h"

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

}  // namespace

std::size_t usableMemory() {
    const std::size_t machine =
        static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return machine;
    return std::min(machine, static_cast<std::size_t>(limit.rlim_cur));
}

double estimatedRecordBytes(std::span<const data> lefts, std::span<const data> rights, bool isOneList, double cutoff) {
    const std::vector<data> someLefts = sample(lefts);
    const std::vector<data> someRights = sample(rights);
    if (someLefts.empty() || someRights.empty()) return 0;
    const PairScan scan(someLefts, someRights, cutoff);
    std::vector<ScoredShift> kept;
    for (std::size_t left = 0; left < someLefts.size(); ++left) {
        scan.scanPartners(left, 0, someRights.size(), OuterMotif::left, kept);
    }
    const double keptPerPair =
        static_cast<double>(kept.size()) / static_cast<double>(someLefts.size() * someRights.size());
    const double pairs = static_cast<double>(lefts.size()) * static_cast<double>(rights.size()) / (isOneList ? 2 : 1);
    // An alignment is one record in each direction, and seldom two.
    return pairs * keptPerPair * (2 * sizeof(dataCombinedScore) + sizeof(ScoredShift));
}

bool holdsInputRecords() {
    return estimatedRecordBytes(Datasets, Datasets, true, simCutoff) <=
           recordShare * static_cast<double>(usableMemory());
}

bool holdsCollectionRecords() {
    return estimatedRecordBytes(Datasets, DatabaseDatasets, false, simCutoff) <=
           recordShare * static_cast<double>(usableMemory());
}

}  // namespace varnolix
