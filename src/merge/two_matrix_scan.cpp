#include "merge/two_matrix_scan.h"

#include <algorithm>

#include "input/getRevCompMotif.h"
#include "rank/comparison.h"
#include "run/system/run_limits.h"
#include "scan/kernel/pair_kernel.h"
#include "scan/plain_score.h"
#include "scan/region_rule.h"

namespace varnolix {

std::vector<dataCombinedScore> scanTwoMatrices(const Matrix& matrix1, const Matrix& matrix2, Direction direction,
                                               const AlignmentLimits& limits) {
    for (const Matrix* matrix : {&matrix1, &matrix2})
        requireAtMost(matrix->size(), mostColumns, "positions of a motif");
    const Matrix reversed1 = getRevCompMotif(matrix1);
    const Matrix reversed2 = getRevCompMotif(matrix2);
    std::vector<ScoredShift> shifts;
    KernelScratch scratch;
    if (!limits.suitKernel() ||
        !scoreShifts(matrix1, reversed1, matrix2, reversed2, limits.cutoffTable, shifts, scratch)) {
        appendPlainShifts({matrix1, reversed1}, {matrix2, reversed2}, OuterMotif::left, 0, limits.leastOverlap,
                          limits.perfectCell, limits.cutoff, walkOf(direction), shifts);
    }
    const PairLengths lengths{static_cast<int>(matrix1.size()), static_cast<int>(matrix2.size())};
    std::vector<dataCombinedScore> records;
    for (const Sliding sliding : {Sliding::left, Sliding::right}) {
        const PrimaryFlag flag = sliding == Sliding::left ? PrimaryFlag::yes : PrimaryFlag::empty;
        forEachOffset(direction, sliding, lengths, shifts, [&](const ScoredShift& kept, int offset) {
            records.push_back(makeRecord(kept, offset, direction, flag, {1, 2}, lengths));
        });
    }
    std::stable_sort(records.begin(), records.end(), comparison);
    return records;
}

}  // namespace varnolix
