#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>
#include <vector>

// Walks a list from its lowest key upwards in the order in which std::sort would leave it, but sorts no further than
// the walk goes. Ties matter: std::sort is unstable, and which of two equal records comes first shows in the reports,
// so the permutation must be that of the library's introspective sort on the whole list. Its partitions are therefore
// made as the library makes them (median of three moved to the front, unguarded partition, heap sort below the depth
// limit, insertion sort of what is left). The parts of a partition never touch each other again, so the right ones can
// wait until the walk reaches them; of a list of n keys, a short walk costs about 2 n comparisons instead of n log n.
// Tested by sorted_walk_test.cpp against std::sort.

namespace varnolix {

/// The key of a record, its place in the unsorted list, and the place of the motif's partner in its list.
struct SortKey {
    double key;
    std::uint32_t place;
    std::uint32_t partner = 0;
};

class SortedWalk {
  public:
    /// Sorts within `keys`, which must outlive the walk. No key may be not-a-number.
    explicit SortedWalk(std::span<SortKey> keys) : keys_(keys) {
        if (!keys.empty()) waiting_.push_back({keys.size(), 2 * static_cast<int>(std::bit_width(keys.size()) - 1)});
    }

    bool atEnd() const { return next_ == keys_.size(); }

    /// The next key in sorted order.
    const SortKey& next() {
        if (next_ == sortedEnd_) sortNextPart();
        return keys_[next_++];
    }

  private:
    struct Part {
        std::size_t end;
        int depthLimit;
    };

    static bool isLess(const SortKey& left, const SortKey& right) { return left.key < right.key; }

    void sortNextPart();
    std::size_t partitionAroundPivot(std::size_t first, std::size_t last);
    void moveMedianToFirst(std::size_t first, std::size_t a, std::size_t b, std::size_t c);
    void insertionSort(std::size_t first, std::size_t last);

    std::span<SortKey> keys_;
    std::vector<Part> waiting_;  // what is not sorted yet, the leftmost part on top
    std::size_t sortedEnd_ = 0;
    std::size_t next_ = 0;
};

}  // namespace varnolix
