#pragma once

#include <span>

#include "rank/sort_key.h"

// Walks the keys of a motif from the most significant record on. A walk seldom goes far, so it sorts no further than it
// is read: a low pivot, estimated from a sample, moves a small share of the keys to the front, and these are sorted. If
// the walk gets past them, the next share is four times as large, and the one behind the third is all that is left. So
// a short walk costs little more than one comparison a key, and the longest one a few comparisons more than sorting.
// Tested by sorted_walk_test.cpp.

namespace varnolix {

class SortedWalk {
  public:
    /// Sorts within `keys`, which must outlive the walk. No score may be not-a-number.
    explicit SortedWalk(std::span<SortKey> keys) : keys_(keys) {}

    bool atEnd() const { return next_ == keys_.size(); }

    /// The next key in sorted order.
    const SortKey& next() {
        if (next_ == sortedEnd_) sortNextPart();
        return keys_[next_++];
    }

  private:
    static constexpr std::size_t firstShare = 2;  ///< of sampleSize
    static constexpr std::size_t shareGrowth = 4;

    void sortNextPart();

    std::span<SortKey> keys_;
    std::size_t share_ = firstShare;
    std::size_t sortedEnd_ = 0;
    std::size_t next_ = 0;
};

}  // namespace varnolix
