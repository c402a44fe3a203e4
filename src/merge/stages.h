#pragma once

#include <vector>

#include "merge/two_matrix_scan.h"
#include "run/shared_records.h"

// The stages that merge groups of motifs and report them, in the order of the run. Each has a source file of its own
// name in stages/. The three families (across files, over all matches, best matches of every motif) differ in their
// lists.

namespace varnolix {

/// Begins the report of merged motifs across files.
void writeHeaderCombinedMatrixGlobal();
/// Begins the report of merged motifs over all matches.
void writeHeaderCombinedMatrixGlobalAndLocal();
/// Begins the report of merged best matches.
void writeHeaderCombinedMatrixBestMatches();

/// Merges one group across files into mergedMotifGlobalMatching.
void combinedMatrixGlobalMatching(const std::vector<dataCombinedScore>& group);
/// Reports these groups.
void WriteCombinedMotifsGlobal();
/// Merges one group over all matches into mergedMotifGlobalAndLocalMatching.
void combinedMatrixGlobalAndLocalMatching(const std::vector<dataCombinedScore>& group);
/// Reports these groups.
void WriteCombinedMotifsGlobalAndLocal();
/// Merges the best matches of one motif into mergedMotifBestMatches.
void combinedMatrixBestMatches(const std::vector<dataCombinedScore>& group);
/// Reports these groups.
void WriteCombinedMotifsBestMatches();

/// The forward alignments of two matrices at or above the cutoff.
std::vector<dataCombinedScore> forwardScanTwoMatrices(const Matrix& matrix1, const Matrix& matrix2,
                                                      const AlignmentLimits& limits);
/// The backward ones.
std::vector<dataCombinedScore> backwardScanTwoMatrices(const Matrix& matrix1, const Matrix& matrix2,
                                                       const AlignmentLimits& limits);

/// Ends the report of merged motifs across files.
void writeFooterCombinedMatrixGlobal();
/// Ends the report of merged motifs over all matches.
void writeFooterCombinedMatrixGlobalAndLocal();
/// Ends the report of merged best matches.
void writeFooterCombinedMatrixBestMatches();

}  // namespace varnolix
