#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "run/shared_records.h"

// How motifs are stored for the kernel: each value as a double and as a byte, and motifs of equal length side by side
// in groups, so that vector instructions can filter eight partners at once. Tested by pair_kernel_test.cpp.

namespace varnolix {

/// Shorter motifs have no alignments.
inline constexpr std::size_t leastKernelColumns = 4;
/// The longest motif whose sums certainly fit 64 bits.
inline constexpr std::size_t mostKernelColumns = 255;

/// Four values as the vector units load them.
struct alignas(32) KernelColumn {
    std::array<double, 4> values;
};

/// The same values in steps of 1/255, for the byte filter.
struct alignas(4) KernelLevels {
    std::array<std::uint8_t, 4> levels;
};

/// Vector code reads up to this many columns at once, so it may read all but one of them past the end of a motif.
inline constexpr int mostColumnsAtOnce = 8;
inline constexpr std::size_t columnsPastEnd = mostColumnsAtOnce - 1;

/// Partners of equal length are filtered in groups of up to this many, one per lane.
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

/// Whether all values are within [0, 1]. A value that is not a number is not.
bool liesWithinUnit(const Matrix& matrix);

/// Motifs prepared for the kernel. It has copies of their values, so the originals need not outlive it.
class KernelMotifs {
  public:
    explicit KernelMotifs(std::span<const data> motifs);
    KernelMotifs(const Matrix& matrix, const Matrix& revCompMatrix);

    std::size_t size() const { return motifs_.size(); }

    /// Whether the kernel may score the motif: it has at most 255 columns, and all its values are within [0, 1]. Pairs
    /// with other motifs need the plain form.
    bool isExact(std::size_t motif) const { return motifs_[motif].isExact; }

    /// Whether the kernel scores its pairs: it is exact and long enough.
    bool takesPart(std::size_t motif) const { return isExact(motif) && length(motif) >= leastKernelColumns; }

    std::size_t length(std::size_t motif) const { return motifs_[motif].length; }
    /// The columns of the motif, followed by those of its reverse complement. Only for motifs that take part.
    const KernelColumn* columns(std::size_t motif) const { return columns_.data() + motifs_[motif].firstColumn; }
    const KernelLevels* levels(std::size_t motif) const { return levels_.data() + motifs_[motif].firstColumn; }

    /// Groups never cross a multiple of this number.
    static constexpr std::size_t blockSize = 1024;
    /// The groups of the motifs of a block that take part.
    std::span<const KernelGroup> groups(std::size_t block) const;
    /// Element 2 k has columns k and k + 1 of the group, and element 2 k + 1 those of the reverse complements.
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
