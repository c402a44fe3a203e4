#pragma once

#include <span>

#include "rank/sort_key.h"

// Visits the keys of a motif in order, the most significant record first. A walk seldom goes far, so it sorts no more
// keys than it must: it moves a small share of them to the front, those below a pivot estimated from a sample, and
// sorts only these. If the walk gets past them, the next share is four times as large, and after the third share all
// the rest is sorted. So a short walk costs little more than one comparison per key, and a complete walk costs a few
// comparisons more than sorting. Tested by sorted_walk_test.cpp.

namespace varnolix {

class SortedWalk {
  public:
    /// Reorders `keys`, which must outlive the walk. No score may be NaN.
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
