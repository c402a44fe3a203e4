#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "run/scored_shift.h"
#include "run/shared_records.h"
#include "scan/kernel/cutoff_table.h"
#include "scan/kernel/kernel_motifs.h"

// Scores all alignments of pairs of motifs, with the same bits as the plain form: cells 1 - |x - y| rounded to double,
// added up in extended precision, divided by their number, rounded to double. pair_kernel.cpp explains how.

namespace varnolix {

/// Which motif of a pair belongs to the outer loop. The orientations name it first.
enum class OuterMotif { left, right };

/// The versions of the kernel. All of them give the same results.
enum class KernelCode { portable, avx2, avx512 };

/// The versions that this processor can run, the fastest last.
std::vector<KernelCode> kernelCodes();
KernelCode fastestKernelCode();

/// Working memory of the kernel: about 270 KB on the heap, because the stack of a thread may be smaller. It is
/// allocated at the first call. Keep one per thread and pass it to every call.
class KernelScratch {
  public:
    struct Buffers;

    KernelScratch();
    ~KernelScratch();
    KernelScratch(KernelScratch&& other) noexcept;
    KernelScratch& operator=(KernelScratch&& other) noexcept;

    Buffers& buffers();

  private:
    std::unique_ptr<Buffers> buffers_;
};

/// Scores the left motif i with the partners firstPartner .. lastPartner - 1 and appends the alignments at or above the
/// cutoff, partners ascending, shifts ascending. Pairs with a motif that is not exact or has fewer than four columns
/// are skipped. Several threads may call this at once, each with its own scratch.
void scoreShifts(const KernelMotifs& lefts, std::size_t i, const KernelMotifs& rights, std::size_t firstPartner,
                 std::size_t lastPartner, const CutoffTable& cutoff, OuterMotif outer, std::vector<ScoredShift>& kept,
                 KernelScratch& scratch, KernelCode code = fastestKernelCode());

/// The same for one pair of matrices; the left one is the outer motif, and the partner is 0. Returns false, and appends
/// nothing, if the pair needs the plain form.
bool scoreShifts(const Matrix& left, const Matrix& leftRevComp, const Matrix& right, const Matrix& rightRevComp,
                 const CutoffTable& cutoff, std::vector<ScoredShift>& kept, KernelScratch& scratch);

}  // namespace varnolix
