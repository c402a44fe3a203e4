#include "job/families/family_distances.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <map>
#include <numeric>

#include "input/input_block.h"
#include "job/families/pair_alignment.h"
#include "job/job_error.h"
#include "run/system/memory_limits.h"

namespace varnolix::job {

namespace {

constexpr std::size_t isCopy = std::numeric_limits<std::size_t>::max();

std::vector<EqualMotifs> equalMotifsOf(std::span<const data> motifs) {
    std::vector<Matrix> matrices;
    for (const data& motif : motifs) matrices.push_back(usableMatrix(motif.matrix));
    return equalMotifs(matrices);
}

std::vector<data> firstOnes(std::span<const data> motifs, std::span<const EqualMotifs> equal) {
    std::vector<data> different;
    for (const EqualMotifs& group : equal) {
        different.emplace_back().matrix = usableMatrix(motifs[group.motifs.front()].matrix);
    }
    return different;
}

std::vector<std::uint32_t> copiesOf(std::span<const EqualMotifs> equal) {
    std::vector<std::uint32_t> copies;
    for (const EqualMotifs& group : equal) copies.push_back(static_cast<std::uint32_t>(group.motifs.size()));
    return copies;
}

}  // namespace

std::vector<EqualMotifs> equalMotifs(std::span<const Matrix> motifs) {
    std::map<Matrix, std::size_t> groups;
    std::vector<EqualMotifs> equal;
    for (std::size_t place = 0; place < motifs.size(); ++place) {
        const Matrix& matrix = motifs[place];
        const auto [found, isNew] = groups.try_emplace(std::min(matrix, oppositeStrand(matrix)), equal.size());
        if (isNew) equal.emplace_back();
        EqualMotifs& group = equal[found->second];
        group.isOpposite.push_back(!isNew && matrix != motifs[group.motifs.front()]);
        group.motifs.push_back(place);
    }
    return equal;
}

FamilyDistances::FamilyDistances(std::span<const data> motifs)
    : equal_(equalMotifsOf(motifs)),
      different_(firstOnes(motifs, equal_)),
      copies_(copiesOf(equal_)),
      placeAmongDifferent_(motifs.size(), isCopy),
      pool_(different_, copies_) {
    for (std::size_t n = 0; n < equal_.size(); ++n) placeAmongDifferent_[equal_[n].motifs.front()] = n;
    requireMemoryForFamilies(different_.size());
    distances_.assign(pairsOf(different_.size()), 0.0);
}

void FamilyDistances::add(std::size_t query, std::size_t target, double pValue) {
    // Either motif of a pair adds its part to 0, and two numbers have one sum, whichever comes first.
    std::atomic_ref(distances_[pairCell(query, target)]).fetch_add(distancePart(pValue));
}

void FamilyDistances::take(std::size_t query, const QueryMatches& found) {
    const std::size_t place = placeAmongDifferent_[query];
    // Long ones have no p-values.
    if (place == isCopy || different_[place].matrix.size() > mostQueryColumns) return;
    for (const SignificantMatch& match : found.matches) {
        const std::size_t target = placeAmongDifferent_[match.target];
        if (target != isCopy) add(place, target, match.pair.pValue);
    }
}

void FamilyDistances::takeAll() {
    std::vector<QueryRequest> requests(different_.size());
    for (std::size_t n = 0; n < requests.size(); ++n) requests[n] = {&different_[n].matrix, n, {}};
    significanceOf(requests, pool_, 0, fastestKernelCode(), [&](std::size_t query, const QueryMatches& found) {
        if (different_[query].matrix.size() > mostQueryColumns) return;
        for (const SignificantMatch& match : found.matches) add(query, match.target, match.pair.pValue);
    });
}

std::vector<double> FamilyDistances::finished() {
    std::vector<std::size_t> longs;
    for (std::size_t n = 0; n < different_.size(); ++n) {
        if (different_[n].matrix.size() > mostQueryColumns) longs.push_back(n);
    }
    const auto count = static_cast<std::ptrdiff_t>(longs.size());
#pragma omp parallel for schedule(dynamic, 1)
    for (std::ptrdiff_t n = 0; n < count; ++n) {
        const std::size_t query = longs[static_cast<std::size_t>(n)];
        const std::vector<double> pValues =
            longQueryProbabilities({different_[query].matrix, pool_, &query}, pool_, query);
        for (std::size_t target = 0; target < different_.size(); ++target) {
            if (target != query && pool_.isCompared(target)) add(query, target, pValues[target]);
        }
    }
    // What is compared with nothing is at the greatest distance.
    for (std::size_t n = 0; n < different_.size(); ++n) {
        if (pool_.isCompared(n)) continue;
        for (std::size_t other = 0; other < different_.size(); ++other) {
            if (other != n) distances_[pairCell(n, other)] = 1.0;
        }
    }
    return std::move(distances_);
}

std::size_t differentMotifs(const JobSources& sources) {
    std::vector<Matrix> matrices;
    for (const JobMotif& motif : sources.motifs) {
        Matrix& matrix = matrices.emplace_back();
        for (const NumberColumn& column : motif.motif.columns) {
            Column values{};
            std::ranges::transform(column, values.begin(), parseNumber);
            matrix.push_back(frequencies(values));
        }
        matrix = usableMatrix(matrix);
    }
    return equalMotifs(matrices).size();
}

void requireMemoryForFamilies(std::size_t motifs) {
    const std::size_t needed = pairsOf(motifs) * sizeof(double);
    const std::size_t left = memoryLeft();
    if (needed <= left) return;
    constexpr std::size_t megabyte = 1000000;
    throw JobError("the distances of " + std::to_string(motifs) + " different motifs take " +
                   std::to_string(needed / megabyte + 1) + " MB for the families, and only " +
                   std::to_string(left / megabyte) + " MB of memory are left");
}

}  // namespace varnolix::job
