#include "rank/sorted_walk.h"

#include <utility>

namespace varnolix {

namespace {

/// Parts up to this size are left to the insertion sort.
constexpr std::size_t smallPart = 16;

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

std::size_t SortedWalk::partitionAroundPivot(std::size_t first, std::size_t last) {
    moveMedianToFirst(first, first + 1, first + (last - first) / 2, last - 1);
    const double pivot = keys_[first].key;
    std::size_t left = first + 1;
    std::size_t right = last;
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
