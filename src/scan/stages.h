#pragma once

// The stages that compare motifs, in the order of the run. Each has a unit of its own name in stages/.

namespace varnolix {

/// Scores all pairs of input motifs and keeps the alignments that reach the cutoff, as forward records.
void forwardScan();
/// Adds the backward records of the same alignments.
void backwardScan();
/// Finds the best score and the longest overlap of each input motif.
void getMaxScores();
/// Gives each record its combinedScore by the bounds of the motif stored first.
void calculateSumScoresCompare();

/// The same four for all input motifs against the collection.
void forwardScanDatabase();
void backwardScanDatabase();
void getMaxScoresDatabase();
void calculateSumScoresCompareDatabase();

/// The same four for the top motifs of the matching across files against the collection.
void forwardScanDatabaseGlobal();
void backwardScanDatabaseGlobal();
void getMaxScoresDatabaseGlobal();
void calculateSumScoresCompareDatabaseGlobal();

}  // namespace varnolix
