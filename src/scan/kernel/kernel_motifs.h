#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "run/shared_records.h"

// How motifs lie in memory for the kernel: each value as a double and as a byte, and motifs of equal length side by
// side in groups, so that the vector units can filter eight partners at once. Tested by pair_kernel_test.cpp.

namespace varnolix {

/// Motifs shorter than this take part in nothing.
inline constexpr std::size_t leastKernelColumns = 4;
/// The longest motif whose sums surely fit 64 bits.
inline constexpr std::size_t mostKernelColumns = 255;

/// Four values as the vector units load them.
struct alignas(32) KernelColumn {
    std::array<double, 4> values;
};

/// The same values in steps of 1/255, for the filter.
struct alignas(4) KernelLevels {
    std::array<std::uint8_t, 4> levels;
};

/// Vector loads run up to this many columns past the end of a motif: all but one of those that are taken at once.
inline constexpr int mostColumnsAtOnce = 8;
inline constexpr std::size_t columnsPastEnd = mostColumnsAtOnce - 1;

/// Partners are filtered in groups of this many of equal length, one per lane.
inline constexpr std::size_t kernelLanes = 8;

/// Two neighbouring columns of each motif of a group.
struct alignas(64) KernelLevelPairs {
    std::array<std::array<KernelLevels, 2>, kernelLanes> lanes;
};

struct KernelGroup {
    alignas(32) std::array<std::uint32_t, kernelLanes> motifs;  ///< ascending; empty lanes repeat the last motif
    std::size_t lanes;                                          ///< how many are not empty
    std::size_t length;
    std::size_t firstPairs;
};

/// Motifs laid out for the kernel: copies of their values, so the originals may go.
class KernelMotifs {
  public:
    explicit KernelMotifs(std::span<const data> motifs);
    KernelMotifs(const Matrix& matrix, const Matrix& revCompMatrix);

    std::size_t size() const { return motifs_.size(); }

    /// Whether the kernel may score the motif: at most 255 columns, and all values within [0, 1]. The plain form has to
    /// take the pairs with any other.
    bool isExact(std::size_t motif) const { return motifs_[motif].isExact; }

    /// Whether the kernel scores its pairs: it is exact and long enough.
    bool takesPart(std::size_t motif) const { return isExact(motif) && length(motif) >= leastKernelColumns; }

    std::size_t length(std::size_t motif) const { return motifs_[motif].length; }
    /// Columns of the motif, followed by those of its reverse complement; only of an exact motif of four or more.
    const KernelColumn* columns(std::size_t motif) const { return columns_.data() + motifs_[motif].firstColumn; }
    const KernelLevels* levels(std::size_t motif) const { return levels_.data() + motifs_[motif].firstColumn; }

    /// Motifs from a multiple of this number to the next are grouped among themselves.
    static constexpr std::size_t blockSize = 1024;
    /// The groups of the exact motifs of a block that are not too short.
    std::span<const KernelGroup> groups(std::size_t block) const;
    /// Columns k and k + 1 of the group are element 2 k, those of the reverse complements element 2 k + 1.
    const KernelLevelPairs* pairs(const KernelGroup& group) const { return pairs_.data() + group.firstPairs; }

  private:
    struct Motif {
        std::size_t firstColumn;
        std::uint32_t length;
        bool isExact;
    };

    using Strands = std::array<const Matrix*, 2>;

    void build(std::span<const Strands> motifs);
    void appendColumns(std::size_t motif, const Strands& strands);
    void appendGroups(std::span<const std::uint32_t> block);
    void appendPairs(const KernelGroup& group);

    std::vector<Motif> motifs_;
    std::vector<KernelColumn> columns_;
    std::vector<KernelLevels> levels_;
    std::vector<KernelGroup> groups_;
    std::vector<std::size_t> blockEnds_;  // in groups_
    std::vector<KernelLevelPairs> pairs_;
};

}  // namespace varnolix
