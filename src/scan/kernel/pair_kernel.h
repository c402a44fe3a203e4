#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "run/scored_shift.h"
#include "run/shared_records.h"

// Scores all alignments of pairs of motifs, bit for bit as the plain form does: cells 1 - |x - y| rounded to double,
// added up in extended precision, divided by their number, rounded to double. See pair_kernel.cpp for how.

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

/// What an alignment of each length must reach to be kept, worked out once per run.
class CutoffTable {
  public:
    explicit CutoffTable(double cutoff);

    /// Least sum of cells, in units of 2^-53, whose mean reaches the cutoff.
    std::int64_t leastSum(std::size_t columns) const { return leastSums_[columns]; }
    /// Largest distance in the levels of the filter that can belong to such a sum; negative if none can.
    std::int32_t greatestDistance(std::size_t columns) const { return greatestDistances_[columns]; }

  private:
    std::array<std::int64_t, mostKernelColumns + 1> leastSums_;
    std::array<std::int32_t, mostKernelColumns + 1> greatestDistances_;
};

/// The motif of the outer loop: orientations are named, and ties settled, from its view.
enum class OuterMotif { left, right };

/// How the kernel computes. Every way gives the same results.
enum class KernelCode { portable, avx2, avx512 };

/// The ways that this processor has, the fastest last.
std::vector<KernelCode> kernelCodes();
KernelCode fastestKernelCode();

/// Where the kernel works: some 270 KB on the heap, as a thread's stack may be smaller. Taken at the first call; keep
/// one for each thread, from call to call.
class KernelScratch {
  public:
    struct Rooms;

    KernelScratch();
    ~KernelScratch();
    KernelScratch(KernelScratch&&) noexcept;
    KernelScratch& operator=(KernelScratch&&) noexcept;

    Rooms& rooms();

  private:
    std::unique_ptr<Rooms> rooms_;
};

/// Scores the left motif i with the partners firstPartner .. lastPartner - 1 and appends the alignments at or above the
/// cutoff, partners ascending, shifts ascending. Pairs with a motif that is not exact or has fewer than four columns
/// are skipped. May be called from several threads at once, each with a scratch of its own.
void scoreShifts(const KernelMotifs& lefts, std::size_t i, const KernelMotifs& rights, std::size_t firstPartner,
                 std::size_t lastPartner, const CutoffTable& cutoff, OuterMotif outer, std::vector<ScoredShift>& kept,
                 KernelScratch& scratch, KernelCode code = fastestKernelCode());

/// The same for one pair of matrices, the left one as outer motif; partner is 0. Returns false, and appends nothing, if
/// the plain form has to take the pair.
bool scoreShifts(const Matrix& left, const Matrix& leftRevComp, const Matrix& right, const Matrix& rightRevComp,
                 const CutoffTable& cutoff, std::vector<ScoredShift>& kept, KernelScratch& scratch);

}  // namespace varnolix
