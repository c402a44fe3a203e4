#include "rank/sorted_walk.h"

#include <array>
#include <utility>

namespace varnolix {

namespace {

/// Parts up to this size are left to the insertion sort.
constexpr std::size_t smallPart = 16;

/// Places, counted from the end of a side, of the keys of one block that belong to the other side of a partition.
class MisplacedKeys {
  public:
    static constexpr std::size_t blockSize = 64;

    bool isEmpty() const { return next_ == end_; }
    std::size_t take() { return steps_[next_++]; }

    template <class IsMisplaced>
    void gather(IsMisplaced isMisplaced) {
        next_ = 0;
        end_ = 0;
        for (std::size_t step = 0; step < blockSize; ++step) {
            steps_[end_] = static_cast<std::uint8_t>(step);
            end_ += isMisplaced(step) ? 1U : 0U;
        }
    }

  private:
    std::array<std::uint8_t, blockSize> steps_;  // written before they are read
    std::size_t next_ = 0;
    std::size_t end_ = 0;
};

}  // namespace

void SortedWalk::sortNextPart() {
    Part part = waiting_.back();
    waiting_.pop_back();
    const std::size_t first = sortedEnd_;
    while (part.end - first > smallPart) {
        if (part.depthLimit == 0) {
            const auto begin = keys_.begin();
            std::partial_sort(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(part.end),
                              begin + static_cast<std::ptrdiff_t>(part.end), isLess);
            sortedEnd_ = part.end;
            return;
        }
        --part.depthLimit;
        const std::size_t cut = partitionAroundPivot(first, part.end);
        waiting_.push_back(part);
        part.end = cut;
    }
    insertionSort(first, part.end);
    sortedEnd_ = part.end;
    // A partition may leave nothing on its left side.
    if (sortedEnd_ == next_ && !atEnd()) sortNextPart();
}

void SortedWalk::moveMedianToFirst(std::size_t first, std::size_t a, std::size_t b, std::size_t c) {
    std::size_t median = 0;
    if (isLess(keys_[a], keys_[b])) {
        median = isLess(keys_[b], keys_[c]) ? b : (isLess(keys_[a], keys_[c]) ? c : a);
    } else {
        median = isLess(keys_[a], keys_[c]) ? a : (isLess(keys_[b], keys_[c]) ? c : b);
    }
    std::swap(keys_[first], keys_[median]);
}

// The unguarded partition swaps the first key from the left that is not below the pivot with the first one from the
// right that is not above it, then the second ones, and so on until the two sides meet. Where they are far apart, the
// places of such keys are gathered for a block of each side at a time, without a branch on a key, and swapped in the
// same order.
std::size_t SortedWalk::partitionAroundPivot(std::size_t first, std::size_t last) {
    moveMedianToFirst(first, first + 1, first + (last - first) / 2, last - 1);
    const double pivot = keys_[first].key;
    std::size_t left = first + 1;
    std::size_t right = last;
    MisplacedKeys fromLeft;
    MisplacedKeys fromRight;
    while (right - left > 2 * MisplacedKeys::blockSize) {
        if (fromLeft.isEmpty()) {
            fromLeft.gather([&](std::size_t step) { return !(keys_[left + step].key < pivot); });
        }
        if (fromRight.isEmpty()) {
            fromRight.gather([&](std::size_t step) { return !(pivot < keys_[right - 1 - step].key); });
        }
        while (!fromLeft.isEmpty() && !fromRight.isEmpty()) {
            std::swap(keys_[left + fromLeft.take()], keys_[right - 1 - fromRight.take()]);
        }
        if (fromLeft.isEmpty()) left += MisplacedKeys::blockSize;
        if (fromRight.isEmpty()) right -= MisplacedKeys::blockSize;
    }
    // A side with gathered keys left over goes on at the first of them.
    if (!fromLeft.isEmpty()) left += fromLeft.take();
    if (!fromRight.isEmpty()) right -= fromRight.take();
    while (true) {
        while (keys_[left].key < pivot) ++left;
        do --right;
        while (pivot < keys_[right].key);
        if (left >= right) return left;
        std::swap(keys_[left], keys_[right]);
        ++left;
    }
}

void SortedWalk::insertionSort(std::size_t first, std::size_t last) {
    for (std::size_t next = first; next < last; ++next) {
        const SortKey key = keys_[next];
        std::size_t place = next;
        for (; place > first && isLess(key, keys_[place - 1]); --place) keys_[place] = keys_[place - 1];
        keys_[place] = key;
    }
}

}  // namespace varnolix
