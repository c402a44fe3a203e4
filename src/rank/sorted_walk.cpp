#include "rank/sorted_walk.h"

#include <algorithm>
#include <array>
#include <utility>

namespace varnolix {

namespace {

constexpr std::size_t sampleSize = 128;

/// Shorter lists are sorted as a whole.
constexpr std::size_t leastPartitioned = 2 * sampleSize;

/// Of a sample spread evenly over the keys, the key with `rank` lower ones.
SortKey sampledKey(std::span<const SortKey> keys, std::size_t rank) {
    std::array<SortKey, sampleSize> sample;
    for (std::size_t k = 0; k < sampleSize; ++k) sample[k] = keys[k * keys.size() / sampleSize];
    const auto chosen = sample.begin() + static_cast<std::ptrdiff_t>(rank);
    std::nth_element(sample.begin(), chosen, sample.end());
    return *chosen;
}

/// Moves the keys below the pivot to the front and returns how many there are.
std::size_t partitionBelow(std::span<SortKey> keys, const SortKey& pivot) {
    std::size_t border = 0;
    for (SortKey& key : keys) {
        if (key < pivot) std::swap(key, keys[border++]);
    }
    return border;
}

}  // namespace

void SortedWalk::sortNextPart() {
    std::span<SortKey> part = keys_.subspan(sortedEnd_);
    if (part.size() >= leastPartitioned && share_ < sampleSize) {
        // Not empty: at least the lower keys of the sample are in it.
        part = part.first(partitionBelow(part, sampledKey(part, share_)));
        share_ *= shareGrowth;
    }
    std::sort(part.begin(), part.end());
    sortedEnd_ += part.size();
}

}  // namespace varnolix
